#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

/// Each with what is spoken of it: "button 0 'Buy now, button' | text 0 'Why?'"
std::string listing(const std::vector<AccessibleElement>& elements) {
    std::string list;
    for (const AccessibleElement& element : elements) {
        list += (list.empty() ? "" : " | ") + roleName(element.role) + " " + std::to_string(element.index) + " '" +
                element.spokenText + "'";
    }
    return list;
}

const auto doNothing = [] {};

View option(const char* label, bool isSelected, AccessibleKind kind) {
    return PlainButton(doNothing, HStack({SymbolImage("square").element(Role::mark), words(label)}))
        .selected(isSelected)
        .accessibleKind(kind)
        .element(Role::option);
}

}  // namespace

TEST(Elements, AreListedInPaintingOrderCountedByRoleAndSpokenWithKindAndState) {
    View row = VStack({words("a").element(Role::title), words("b").element(Role::message)});
    View star = SymbolImage("star.fill");
    struct {
        View tree;
        const char* listed;
    } table[] = {
        {VStack({words("a").element(Role::title), words("b"), words("c")}),
         "title 0 'a, heading' | text 0 'b' | text 1 'c'"},
        {Button(doNothing, VStack({words("a"), words("b")})), "button 0 'a b, button'"},
        {VStack({words("a"), Button(doNothing, words("b"))}).element(Role::card).overlay(Alignment::top(), words("c")),
         "card 0 '' | text 0 'a' | button 0 'b, button' | text 1 'c'"},
        {words("a")
             .accessibleKind(AccessibleKind::dialog)
             .accessibleName("b")
             .element(Role::card)
             .onTapGesture(doNothing),
         "card 0 'b, dialog, button' | text 0 'a'"},
        {row.element(Role::row).onTapGesture(doNothing), "row 0 'a, b, button' | title 0 '' | message 0 ''"},
        {row.actsOnTap(false).element(Role::row).onTapGesture(doNothing),
         "row 0 '' | title 0 'a, heading' | message 0 'b'"},
        {VStack({option("a", true, AccessibleKind::radioButton), option("b", false, AccessibleKind::checkBox)})
             .element(Role::options),
         "options 0 '' | option 0 'a, radio button, selected, 1 of 2' | mark 0 '' | option 1 'b, check box, not "
         "checked, "
         "2 of 2' | mark 1 ''"},
        {HStack({star.selected(true).element(Role::star, "1"), star.selected(false).element(Role::star, "2")})
             .adjustable({1, 2}, [](int) {})
             .element(Role::stars)
             .language("de"),
         "stars 0 'Bewertung, anpassbar, 1 von 2' | star 0 'Stern 1 von 2, Taste, ausgewählt' | star 1 'Stern 2 von 2, "
         "Taste, nicht ausgewählt'"},
        {star.element(Role::close, "Close").language("tlh"), "close 0 'Close, button'"},
        {ColorRectangle(red).element(Role::image, "Kettle"), "image 0 'Kettle, image'"},
        {ColorRectangle(red).accessibleName("").element(Role::image, "Image").onTapGesture(doNothing),
         "image 0 'image, button'"},
        {HStack({Divider(), Spacer(), FilledCircle(red)}), ""},
    };
    for (const auto& [tree, listed] : table)
        EXPECT_EQ(listing(Stage(window(100, 100), tree).view().elements()), listed);
}

TEST(Elements, AreReadFromTitleToCloseControlAndEachHasItsPlaceInATree) {
    View card =
        VStack({Button(doNothing, words("b")), ColorRectangle(red).element(Role::image, "i"),
                VStack({option("o", true, AccessibleKind::radioButton)}).element(Role::options),
                words("m").element(Role::message), Divider().element(Role::divider), words("t").element(Role::title)});
    Stage stage(window(200, 200), ZStack(Alignment::top(), {PlainButton(doNothing, words("x")).element(Role::close),
                                                            card.element(Role::card)}));
    EXPECT_EQ(
        listing(stage.view().readingOrder()),
        "title 0 't, heading' | image 0 'i, image' | message 0 'm' | option 0 'o, radio button, selected, 1 of 1' "
        "| button 0 'b, button' | close 0 'Close, button'");
    EXPECT_EQ(stage.element(Role::close).parent, (ElementIdentity{Role::card, 0}));
    EXPECT_EQ(stage.element(Role::option).parent, (ElementIdentity{Role::options, 0}));
    EXPECT_EQ(stage.element(Role::options).parent, (ElementIdentity{Role::card, 0}));
    EXPECT_TRUE(stage.element(Role::button).isFocusable());
    EXPECT_FALSE(stage.element(Role::message).isFocusable());
}

TEST(Elements, ActByTheirIdentity) {
    std::string done;
    auto tells = [&done](const char* name) { return [&done, name] { done += name; }; };
    View controls =
        VStack({Button(tells("a"), words("a")),
                Button(tells("b"), words("b")).onTapGesture(tells("g")).padding(Edge::top, 500),
                words("i").actsOnTap(false).element(Role::image).onTapGesture(tells("i")),
                words("s").adjustable({1, 5}, [&](int steps) { done += std::to_string(steps); }).element(Role::stars)});
    Stage stage(window(100, 100), ScrollView(controls));
    EXPECT_TRUE(stage.view().activate({Role::button, 1}));
    EXPECT_TRUE(stage.view().adjust({Role::stars, 0}, -2));
    EXPECT_FALSE(stage.view().activate({Role::button, 2}));
    EXPECT_FALSE(stage.view().activate({Role::image, 0}));
    EXPECT_FALSE(stage.view().adjust({Role::button, 0}, 1));
    EXPECT_EQ(done, "b-2");
}

TEST(Elements, SpeakTheReadersLanguageWhereTheTextsHaveNoneInTheWordsOfTheHost) {
    SceneTraits traits = window(100, 100);
    traits.locale = "fr-CA";
    Stage stage(traits, words("x").element(Role::close));
    EXPECT_EQ(stage.element(Role::close).spokenText, "Fermer, bouton");
    SpokenWordTable words = knownSpokenWords();
    words["fr"].button = "touche";
    stage.view().setSpokenWords(words);
    stage.settle();
    EXPECT_EQ(stage.element(Role::close).spokenText, "Fermer, touche");
}
