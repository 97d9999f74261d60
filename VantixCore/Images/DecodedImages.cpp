#include "VantixCore/Images/DecodedImages.h"

#include "Platform/Values/WhileAlive.h"

#include <algorithm>
#include <utility>

namespace vantix {

DecodedImages::DecodedImages(std::shared_ptr<DispatchQueue> queue, std::size_t capacity, Duration lifetime)
    : queue_(std::move(queue)), capacity_(capacity), lifetime_(lifetime) {}

void DecodedImages::insert(const std::string& url, const Image& picture) {
    remove(url);
    entries_.push_back({url, picture});
    makeRoom();
    auto expire = [bitmap = std::weak_ptr(picture.bitmap)](DecodedImages& images) { images.expire(bitmap); };
    queue_->asyncAfter(lifetime_, whileAlive(weak_from_this(), expire));
}

std::optional<Image> DecodedImages::find(const std::string& url) const {
    auto entry = std::ranges::find(entries_, url, &Entry::url);
    return entry == entries_.end() ? std::nullopt : std::optional(entry->picture);
}

void DecodedImages::remove(const std::string& url) {
    std::erase_if(entries_, [&](const Entry& entry) { return entry.url == url; });
}

void DecodedImages::makeRoom() {
    std::size_t size = 0;
    for (const Entry& entry : entries_) size += entry.picture.bitmap->pixels.size() * sizeof(std::uint32_t);
    while (size > capacity_) {
        size -= entries_.front().picture.bitmap->pixels.size() * sizeof(std::uint32_t);
        entries_.pop_front();
    }
}

void DecodedImages::expire(const std::weak_ptr<const Bitmap>& bitmap) {
    std::erase_if(entries_, [meant = bitmap.lock()](const Entry& entry) { return entry.picture.bitmap == meant; });
}

}  // namespace vantix
