#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Image.h"

#include <cstddef>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

/// Decoded pictures that somebody may soon want to show, by URL: for a short time, and bounded in bytes, those that
/// came first go first. Used on one queue only.
class DecodedImages : public std::enable_shared_from_this<DecodedImages> {
public:
    DecodedImages(std::shared_ptr<DispatchQueue> queue, std::size_t capacity, Duration lifetime);

    void insert(const std::string& url, const Image& picture);
    std::optional<Image> find(const std::string& url) const;
    void remove(const std::string& url);
    void removeAll() { entries_.clear(); }

private:
    struct Entry {
        std::string url;
        Image picture;
    };

    void makeRoom();
    void expire(const std::weak_ptr<const Bitmap>& bitmap);

    std::shared_ptr<DispatchQueue> queue_;
    std::size_t capacity_;
    Duration lifetime_;
    std::list<Entry> entries_;
};

}  // namespace vantix
