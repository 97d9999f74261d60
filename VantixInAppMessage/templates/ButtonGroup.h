#pragma once

#include "DeclarativeUI/Elements/Stacks.h"
#include "DeclarativeUI/State.h"
#include "DeclarativeUI/View.h"
#include "VantixInAppMessage/templates/SelectionRow.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace vantix {

enum class Orientation { horizonal, vertical };

enum class ButtonType { radio, checkMark };

/// What tells the rows of a group apart.
template <typename Tag>
concept RowTag = std::equality_comparable<Tag> && requires(const Tag& tag) {
    { std::hash<Tag>()(tag) } -> std::convertible_to<std::size_t>;
};

/// A row of which at most one is chosen in its group.
template <RowTag Tag, std::convertible_to<View> ButtonView = View, std::convertible_to<View> LabelView = View>
struct RadioButton {
    Tag tag;
    bool shouldAddDivider = false;
    Binding<std::optional<Tag>> selection;
    /// The mark of a row that is chosen, or not.
    std::function<ButtonView(bool isSelected)> button;
    LabelView label;

    View body() const {
        bool isSelected = selection.get() == tag;
        return selectionRow(AccessibleKind::radioButton, button(isSelected), label, isSelected, shouldAddDivider,
                            [selection = selection, tag = tag] { selection.set(tag); });
    }
};

/// A row that is ticked by itself.
template <RowTag Tag, std::convertible_to<View> ButtonView = View, std::convertible_to<View> LabelView = View>
struct CheckMarkButton {
    Tag tag;
    std::function<ButtonView(bool isSelected)> button;
    LabelView label;
    std::function<void(const Tag&)> selectionHandler;
    std::function<bool()> isSelected;
    std::function<bool()> shouldAddDivider;

    View body() const {
        return selectionRow(AccessibleKind::checkBox, button(isSelected()), label, isSelected(), shouldAddDivider(),
                            [handler = selectionHandler, tag = tag] { handler(tag); });
    }
};

/// A row for each tag: of radio rows one is chosen, of check-mark rows any number, kept in the order of ticking.
template <RowTag Tag, std::convertible_to<View> ButtonView = View, std::convertible_to<View> LabelView = View>
struct ButtonGroup {
    using Tags = std::vector<Tag>;

    Binding<std::optional<Tags>> multiSelection;
    Binding<std::optional<Tag>> singleSelection;
    /// `horizonal` sets the rows side by side.
    Orientation orientation = Orientation::vertical;
    Tags tags;
    ButtonType type = ButtonType::radio;
    std::function<ButtonView(const Tag&, bool isSelected)> button;
    std::function<LabelView(const Tag&)> label;

    /// The rows touch one another, so that every point of the list belongs to one of them.
    View body() const {
        constexpr double noSpacing = 0;
        View rows = orientation == Orientation::horizonal ? HStack(VerticalAlignment::top, noSpacing, buttons())
                                                          : VStack(HorizontalAlignment::leading, noSpacing, buttons());
        return rows.element(Role::options);
    }

private:
    std::vector<View> buttons() const {
        std::vector<View> rows;
        for (std::size_t at = 0; at < tags.size(); ++at) {
            bool isLast = at + 1 == tags.size();
            rows.push_back(type == ButtonType::radio ? radioRow(tags[at], !isLast) : checkMarkRow(tags[at], !isLast));
        }
        return rows;
    }

    View radioRow(const Tag& tag, bool divider) const {
        return RadioButton<Tag, ButtonView, LabelView>{tag, divider, singleSelection, markOf(tag), label(tag)}.body();
    }

    View checkMarkRow(const Tag& tag, bool divider) const {
        auto chosen = multiSelection.get().value_or(Tags());
        bool isChosen = std::find(chosen.begin(), chosen.end(), tag) != chosen.end();
        auto toggleTag = [selection = multiSelection](const Tag& toggled) { toggle(selection, toggled); };
        return CheckMarkButton<Tag, ButtonView, LabelView>{
            tag, markOf(tag), label(tag), toggleTag, [isChosen] { return isChosen; }, [divider] { return divider; }}
            .body();
    }

    std::function<ButtonView(bool)> markOf(const Tag& tag) const {
        return [button = button, tag](bool isSelected) { return button(tag, isSelected); };
    }

    static void toggle(const Binding<std::optional<Tags>>& selection, const Tag& tag) {
        auto chosen = selection.get().value_or(Tags());
        auto found = std::find(chosen.begin(), chosen.end(), tag);
        if (found == chosen.end()) {
            chosen.push_back(tag);
        } else {
            chosen.erase(found);
        }
        selection.set(std::move(chosen));
    }
};

}  // namespace vantix
