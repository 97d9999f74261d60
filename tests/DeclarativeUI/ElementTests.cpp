#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

Stage staged(const View& tree) { return Stage(window(100, 100), tree); }

/// "button 0 'Buy now' | text 0 'Why?'"
std::string listing(Stage stage) {
    std::string list;
    for (const AccessibleElement& element : stage.view().elements()) {
        list += (list.empty() ? "" : " | ") + roleName(element.role) + " " + std::to_string(element.index) + " '" +
                element.label + "'";
    }
    return list;
}

const auto doNothing = [] {};

}  // namespace

TEST(Elements, AreListedInPaintingOrderAndCountedByRole) {
    struct {
        View tree;
        const char* listing;
    } table[] = {
        {words("a"), "text 0 'a'"},
        {VStack({words("a").element(Role::title), words("b"), words("c")}), "title 0 'a' | text 0 'b' | text 1 'c'"},
        {Button(doNothing, VStack({words("a"), words("b")})), "button 0 'a b'"},
        {VStack({words("a"), Button(doNothing, words("b"))}).element(Role::card).overlay(Alignment::top(), words("c")),
         "card 0 '' | text 0 'a' | button 0 'b' | text 1 'c'"},
        {PlainButton(doNothing, HStack({SymbolImage("square").element(Role::mark), words("a")})).element(Role::option),
         "option 0 'a' | mark 0 ''"},
        {Button(doNothing, words("x")).element(Role::close, "Close"), "close 0 'Close'"},
        {SymbolImage("star.fill").element(Role::star, "1"), "star 0 '1'"},
        {HStack({Divider(), Spacer(), FilledCircle(red)}), ""},
        {words("a").element(Role::title, "named"), "title 0 'named'"},
    };
    for (const auto& row : table) EXPECT_EQ(listing(staged(row.tree)), row.listing);
}

TEST(Elements, AreSpokenWithKindAndState) {
    struct {
        View tree;
        Role role;
        const char* spoken;
    } table[] = {
        {Button(doNothing, words("Buy now")), Role::button, "Buy now, button"},
        {PlainButton(doNothing, words("x")).element(Role::close, "Close"), Role::close, "Close, button"},
        {PlainButton(doNothing, words("Tea")).selected(true).element(Role::option), Role::option, "Tea, selected"},
        {PlainButton(doNothing, words("Tea")).selected(false).element(Role::option), Role::option, "Tea, not selected"},
        {ColorRectangle(red).element(Role::image, "Kettle"), Role::image, "Kettle, image"},
        {words("Hello").element(Role::title), Role::title, "Hello"},
        {words("Hello"), Role::text, "Hello"},
        {words("*").spokenText("3 of 5 stars").selected(true).element(Role::star, "3"), Role::star, "3 of 5 stars"},
    };
    for (const auto& row : table) EXPECT_EQ(staged(row.tree).element(row.role).spokenText, row.spoken);
}
