#include "DeclarativeUI/Elements/Stacks.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/Lengths.h"
#include "DeclarativeUI/Layout/Placement.h"

#include <algorithm>
#include <numeric>

namespace vantix {

namespace {

std::vector<ElementPointer> elementsOf(const std::vector<View>& views) {
    std::vector<ElementPointer> elements(views.begin(), views.end());
    std::erase(elements, nullptr);
    return elements;
}

/// Lays its children out one after the other along its axis.
class StackElement final : public Element {
public:
    StackElement(Axis axis, Alignment alignment, double spacing, const std::vector<View>& children)
        : axis_(axis), alignment_(alignment), spacing_(bounded(spacing)), children_(elementsOf(children)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        double length = gaps(pass);
        double thickness = 0;
        for (const Child& child : shares(proposal, inside(environment, pass), pass)) {
            length += along(child.size);
            thickness = std::max(thickness, across(child.size));
        }
        return axis_ == Axis::horizontal ? Size{length, thickness} : Size{thickness, length};
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        const Environment& inner = inside(environment, pass);
        bool fromTheRight = axis_ == Axis::horizontal && inner.isRightToLeft();
        auto placed = shares(proposal, inner, pass);
        double at = 0;
        for (std::size_t index = 0; index < children_.size(); ++index) {
            const auto& [share, size] = placed[index];
            double offset = fromTheRight ? along(frame.size) - at - along(size) : at;
            pass.place(children_[index], {placeOf(offset, size, frame, inner), size}, share, inner);
            at += along(size) + pass.grid().settled(spacing_);
        }
    }

private:
    struct Child {
        Proposal share;
        Size size;
    };

    double along(const Size& size) const { return axis_ == Axis::horizontal ? size.width : size.height; }
    double across(const Size& size) const { return axis_ == Axis::horizontal ? size.height : size.width; }
    double gaps(const LayoutPass& pass) const {
        return children_.empty() ? 0 : pass.grid().settled(spacing_) * static_cast<double>(children_.size() - 1);
    }

    Proposal offer(std::optional<double> length, const Proposal& proposal) const {
        return axis_ == Axis::horizontal ? Proposal{length, proposal.height} : Proposal{proposal.width, length};
    }

    const Environment& inside(const Environment& environment, LayoutPass& pass) const {
        if (environment.stackAxis == axis_) return environment;
        return pass.memory().environment(*this, environment, [this](Environment& inner) { inner.stackAxis = axis_; });
    }

    Point placeOf(double offset, const Size& size, const Rect& frame, const Environment& environment) const {
        if (axis_ == Axis::horizontal) {
            return {frame.minX() + offset,
                    frame.minY() + topOffset(alignment_.vertical, frame.size.height, size.height)};
        }
        return {frame.minX() + leadingOffset(alignment_.horizontal, frame.size.width, size.width, environment),
                frame.minY() + offset};
    }

    /// What each child is offered and answers.
    std::vector<Child> shares(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const {
        std::vector<Child> result(children_.size());
        auto offerTo = [&](std::size_t child, const Proposal& share) {
            result[child] = {share, pass.measure(children_[child], share, environment)};
        };
        auto length = axis_ == Axis::horizontal ? proposal.width : proposal.height;
        if (!length) {
            for (std::size_t child = 0; child < children_.size(); ++child) offerTo(child, proposal);
            return result;
        }
        auto order = leastFlexibleFirst(*length, proposal, environment, pass);
        auto firstSpacer = std::stable_partition(
            order.begin(), order.end(), [this](std::size_t child) { return !children_[child]->takesWhatIsLeft(); });
        auto serve = [&](auto first, auto last, double room) {
            for (auto child = first; child != last; ++child) {
                offerTo(*child, offer(room / static_cast<double>(last - child), proposal));
                room = std::max(0.0, room - along(result[*child].size));
            }
            return room;
        };
        double kept = std::accumulate(firstSpacer, order.end(), 0.0, [&](double sum, std::size_t spacer) {
            return sum + along(pass.measure(children_[spacer], offer(0.0, proposal), environment));
        });
        double left = serve(order.begin(), firstSpacer, std::max(0.0, *length - gaps(pass) - kept));
        serve(firstSpacer, order.end(), left + kept);
        return result;
    }

    std::vector<std::size_t> leastFlexibleFirst(double length, const Proposal& proposal, const Environment& environment,
                                                LayoutPass& pass) const {
        std::vector<std::size_t> order(children_.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        // Of nothing, and of infinity, all get the same; to ask each of them anyway would multiply the work at every
        // level of stacks within stacks.
        if (children_.size() < 2 || length == 0 || length == infinity) return order;

        std::vector<double> flexibility(children_.size());
        for (std::size_t child : order) {
            double most = along(pass.measure(children_[child], offer(infinity, proposal), environment));
            double least = along(pass.measure(children_[child], offer(0.0, proposal), environment));
            flexibility[child] = most - least;
        }
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return flexibility[a] < flexibility[b]; });
        return order;
    }

    Axis axis_;
    Alignment alignment_;
    double spacing_;
    std::vector<ElementPointer> children_;
};

/// Lays its children over one another.
class LayersElement final : public Element {
public:
    LayersElement(Alignment alignment, const std::vector<View>& children)
        : alignment_(alignment), children_(elementsOf(children)) {}

    Size measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const override {
        Size size;
        for (const ElementPointer& child : children_) {
            Size answer = pass.measure(child, proposal, environment);
            size = {std::max(size.width, answer.width), std::max(size.height, answer.height)};
        }
        return size;
    }

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        for (const ElementPointer& child : children_)
            placeAligned(child, frame, proposal, alignment_, environment, pass);
    }

private:
    Alignment alignment_;
    std::vector<ElementPointer> children_;
};

View stack(Axis axis, Alignment alignment, double spacing, const std::vector<View>& children) {
    return View(std::make_shared<const StackElement>(axis, alignment, spacing, children));
}

}  // namespace

View VStack(const std::vector<View>& children) { return VStack(HorizontalAlignment::center, children); }

View VStack(HorizontalAlignment alignment, const std::vector<View>& children) {
    return VStack(alignment, standardSpacing, children);
}

View VStack(HorizontalAlignment alignment, double spacing, const std::vector<View>& children) {
    return stack(Axis::vertical, {alignment, VerticalAlignment::center}, spacing, children);
}

View HStack(const std::vector<View>& children) { return HStack(VerticalAlignment::center, children); }

View HStack(VerticalAlignment alignment, const std::vector<View>& children) {
    return HStack(alignment, standardSpacing, children);
}

View HStack(VerticalAlignment alignment, double spacing, const std::vector<View>& children) {
    return stack(Axis::horizontal, {HorizontalAlignment::center, alignment}, spacing, children);
}

View ZStack(Alignment alignment, const std::vector<View>& children) {
    return View(std::make_shared<const LayersElement>(alignment, children));
}

}  // namespace vantix
