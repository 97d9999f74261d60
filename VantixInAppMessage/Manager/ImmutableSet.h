#pragma once

#include <algorithm>
#include <compare>
#include <memory>
#include <utility>
#include <vector>

namespace vantix {

/// A sorted set that never changes: each change makes a new one, which shares with the old one all but the few nodes
/// that lead to the change. `Order` compares two values in three ways; values that compare equal are one.
template <typename T, typename Order = std::compare_three_way>
class ImmutableSet {
public:
    ImmutableSet() = default;
    explicit ImmutableSet(std::vector<T> values) {
        std::sort(values.begin(), values.end(), [](const T& a, const T& b) { return Order{}(a, b) < 0; });
        root_ = built(values.data(), values.data() + values.size());
    }

    bool isEmpty() const { return !root_; }

    ImmutableSet inserting(const T& value) const { return ImmutableSet(inserted(root_, value)); }
    ImmutableSet removing(const T& value) const { return ImmutableSet(removed(root_, value)); }

    /// The first value of a stretch that is wanted; null when there is none. `side` compares a value with the stretch:
    /// less before it, equal within it, greater behind it.
    template <typename Side, typename Wanted>
    const T* first(Side side, Wanted wanted) const {
        return first(root_.get(), side, wanted);
    }

    /// Takes the values in order.
    template <typename Visit>
    void forEach(Visit visit) const {
        first([](const T&) { return std::strong_ordering::equal; },
              [&](const T& value) {
                  visit(value);
                  return false;
              });
    }

private:
    struct Node;
    using Link = std::shared_ptr<const Node>;
    /// The heights of its two sides differ by 1 at most.
    struct Node {
        Link left;
        T value;
        Link right;
        int height;
    };

    explicit ImmutableSet(Link root) : root_(std::move(root)) {}

    static int height(const Link& at) { return at ? at->height : 0; }

    static Link joined(Link left, const T& value, Link right) {
        int height = 1 + std::max(ImmutableSet::height(left), ImmutableSet::height(right));
        return std::make_shared<const Node>(Node{std::move(left), value, std::move(right), height});
    }

    static Link built(const T* begin, const T* end) {
        if (begin == end) return nullptr;
        const T* middle = begin + (end - begin) / 2;
        return joined(built(begin, middle), *middle, built(middle + 1, end));
    }

    /// Joins sides whose heights differ by 2 at most.
    static Link balanced(const Link& left, const T& value, const Link& right) {
        if (height(left) > height(right) + 1) {
            if (height(left->left) >= height(left->right))
                return joined(left->left, left->value, joined(left->right, value, right));
            const Link& middle = left->right;
            return joined(joined(left->left, left->value, middle->left), middle->value,
                          joined(middle->right, value, right));
        }
        if (height(right) > height(left) + 1) {
            if (height(right->right) >= height(right->left))
                return joined(joined(left, value, right->left), right->value, right->right);
            const Link& middle = right->left;
            return joined(joined(left, value, middle->left), middle->value,
                          joined(middle->right, right->value, right->right));
        }
        return joined(left, value, right);
    }

    static Link inserted(const Link& at, const T& value) {
        if (!at) return joined(nullptr, value, nullptr);
        auto order = Order{}(value, at->value);
        if (order < 0) return balanced(inserted(at->left, value), at->value, at->right);
        if (order > 0) return balanced(at->left, at->value, inserted(at->right, value));
        return at;
    }

    static Link removed(const Link& at, const T& value) {
        if (!at) return nullptr;
        auto order = Order{}(value, at->value);
        if (order < 0) return balanced(removed(at->left, value), at->value, at->right);
        if (order > 0) return balanced(at->left, at->value, removed(at->right, value));
        if (!at->left) return at->right;
        if (!at->right) return at->left;
        const Node* next = at->right.get();
        while (next->left) next = next->left.get();
        return balanced(at->left, next->value, removed(at->right, next->value));
    }

    template <typename Side, typename Wanted>
    static const T* first(const Node* at, Side& side, Wanted& wanted) {
        if (!at) return nullptr;
        auto where = side(at->value);
        if (where >= 0) {
            if (const T* found = first(at->left.get(), side, wanted)) return found;
        }
        if (where == 0 && wanted(at->value)) return &at->value;
        return where <= 0 ? first(at->right.get(), side, wanted) : nullptr;
    }

    Link root_;
};

}  // namespace vantix
