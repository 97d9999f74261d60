#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

/// Each with what is spoken of it: "button 0 'Buy now, button' | text 0 'Why?'"
std::string listing(const View& tree) {
    Stage stage(window(100, 100), tree);
    std::string list;
    for (const AccessibleElement& element : stage.view().elements()) {
        list += (list.empty() ? "" : " | ") + roleName(element.role) + " " + std::to_string(element.index) + " '" +
                element.spokenText + "'";
    }
    return list;
}

const auto doNothing = [] {};

}  // namespace

TEST(Elements, AreListedInPaintingOrderCountedByRoleAndSpokenWithKindAndState) {
    struct {
        View tree;
        const char* listing;
    } table[] = {
        {VStack({words("a").element(Role::title), words("b"), words("c")}), "title 0 'a' | text 0 'b' | text 1 'c'"},
        {Button(doNothing, VStack({words("a"), words("b")})), "button 0 'a b, button'"},
        {VStack({words("a"), Button(doNothing, words("b"))}).element(Role::card).overlay(Alignment::top(), words("c")),
         "card 0 'Message' | text 0 'a' | button 0 'b, button' | text 1 'c'"},
        {PlainButton(doNothing, HStack({SymbolImage("square").element(Role::mark), words("a")}))
             .selected(true)
             .element(Role::option),
         "option 0 'a, selected' | mark 0 ''"},
        {ColorRectangle(red).element(Role::image, "Kettle"), "image 0 'Kettle, image'"},
        {HStack({Divider(), Spacer(), FilledCircle(red)}), ""},
    };
    for (const auto& row : table) EXPECT_EQ(listing(row.tree), row.listing);
}
