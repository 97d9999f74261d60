#include "DeclarativeUI/Interaction/Interaction.h"
#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace vantix;

namespace {

constexpr WordTable<Key, 12> keyWords{{
    {Key::next, "next"},
    {Key::previous, "previous"},
    {Key::up, "up"},
    {Key::down, "down"},
    {Key::left, "left"},
    {Key::right, "right"},
    {Key::home, "home"},
    {Key::pageUp, "pageUp"},
    {Key::pageDown, "pageDown"},
    {Key::end, "end"},
    {Key::activate, "activate"},
    {Key::escape, "escape"},
}};

/// A message with two options above each other, a row of stars, a button and a close control, in a window that shows
/// 100 points of it. Options are at 0 to 50 and 50 to 100, stars below, then the button.
class Trial {
public:
    explicit Trial(FocusCycle cycle) : interaction_(stage_.sharedView(), cycle) {}

    /// Words of keys, "press", "move", "release" with the height of the point, "cancel". A key that is of no use to the
    /// message is told as "unused". Returns what happened, and whether a control is pressed and which has the focus.
    std::string play(const std::string& script) {
        log_.clear();
        std::istringstream words(script);
        for (std::string word; words >> word;) step(word, words);
        stage_.settle();
        if (interaction_.isPressing()) log_ += "pressed ";
        if (auto focused = interaction_.focused())
            log_ += "on " + roleName(focused->role) + std::to_string(focused->index);
        if (double offset = stage_.view().scrollArea().offset; offset > 0) log_ += " at " + std::to_string(int(offset));
        return log_;
    }

private:
    void step(const std::string& word, std::istream& words) {
        double y = 0;
        if (word == "press" && words >> y) return interaction_.pointerDown({50, y});
        if (word == "move" && words >> y) return interaction_.pointerMoved({50, y});
        if (word == "release" && words >> y) return interaction_.pointerUp({50, y});
        if (word == "cancel") return interaction_.pointerCancelled();
        if (!interaction_.keyDown(*keyWords.value(word))) log_ += "unused ";
        stage_.settle();
    }

    View control(Role role, const std::string& name) {
        View area = ColorRectangle(Color::black()).frame({.width = 100, .height = 50});
        View control = Button([this, name] { log_ += name + " "; }, area).element(role, name);
        return role == Role::option ? control.selected(false) : control;
    }

    View message() {
        View stars = ColorRectangle(Color::black()).frame({.width = 100, .height = 50});
        stars = stars.adjustable({2, 5}, [this](int steps) { log_ += "stars" + std::to_string(steps) + " "; })
                    .element(Role::stars);
        return ScrollView(VStack(HorizontalAlignment::center, 0,
                                 {control(Role::option, "tea"), control(Role::option, "milk"), stars,
                                  control(Role::button, "send"), control(Role::close, "close")}));
    }

    std::string log_;
    Stage stage_{window(100, 100), [this] { return message(); }};
    Interaction interaction_;
};

struct Row {
    FocusCycle cycle;
    const char* script;
    const char* happens;
};

}  // namespace

TEST(Interaction, MatchesItsTable) {
    using enum FocusCycle;
    const Row rows[] = {
        {closed, "press 25", "pressed "},
        {closed, "press 25 release 25", "tea "},
        {closed, "press 25 move 75", ""},
        {closed, "press 25 move 75 release 75", ""},
        {closed, "press 25 move 75 move 25 release 25", "tea "},
        {closed, "press 25 cancel release 25", ""},
        {closed, "press 25 down release 5", " at 40"},
        {closed, "press 25 down move 5", " at 40"},
        {closed, "release 25", ""},
        {closed, "activate", "unused "},
        {closed, "next activate", "tea on option0"},
        {closed, "next next next next next", "on close0 at 150"},
        {closed, "next next next next next next", "on option0"},
        {closed, "previous", "on close0 at 150"},
        {open, "previous next", "unused  at 150"},
        {open, "next previous", "unused "},
        {closed, "next down", "on option1"},
        {closed, "next up down down down", "on option1"},
        {closed, "next next next right up left down", "stars1 stars1 stars-1 stars-1 on stars0 at 50"},
        {closed, "down", " at 40"},
        {closed, "end up", " at 110"},
        {closed, "pageDown", " at 60"},
        {closed, "end pageUp home right", "unused "},
        {closed, "escape", "close "},
    };
    for (const auto& [cycle, script, happens] : rows) {
        SCOPED_TRACE(script);
        EXPECT_EQ(Trial(cycle).play(script), happens);
    }
}
