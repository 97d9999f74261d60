#include "tests/Support/PaintedEdges.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <random>

using namespace vantix;

namespace {

const std::vector<SceneTraits> screens{{{390, 844}, {47, 0, 34, 0}, 3},       {{844, 390}, {0, 47, 21, 47}, 3},
                                       {{320, 568}, {20, 0, 0, 0}, 2},        {{667, 375}, {}, 1.5},
                                       {{820, 1180}, {24, 0, 20, 0}, 1},      {{1180, 820}, {24, 0, 20, 0}, 2},
                                       {{357.3, 411.7}, {20.2, 0, 13, 5}, 3}, {{357.3, 411.7}, {20.2, 0, 13, 5}, 2.75}};
const Texts types{"POPUP", "FULLSCREEN", "HEADER", "FOOTER", "RATING", "FEEDBACK", "APPRATING"};
const Texts texts{"Hello",
                  "A message whose words take several lines, on a phone that is held upright at least",
                  "مرحبا بالعالم",
                  "مرحبا بالعالم هذا نص طويل جدا لكي ينكسر على أسطر كثيرة",
                  "สวัสดีชาวโลก",
                  "你好,世界",
                  "नमस्ते दुनिया",
                  "안녕하세요",
                  "👩🏽‍🚀🇫🇷 🎉",
                  "Donaudampfschifffahrtsgesellschaftskapitänsmützen"};

/// A random message on a random screen: the same for the same seed.
struct Walk {
    explicit Walk(unsigned seed) : random(seed) {
        const Dictionary plain, colored{{"backgroundColor", "#3366FF"}, {"textSize", "9"}}, large{{"textSize", "31"}};
        auto style = [&] { return one(std::vector{plain, colored, large}); };
        campaign.type = one(types);
        campaign.title = one({"", one(texts)});
        bool isBanner = campaign.type == "HEADER" || campaign.type == "FOOTER";
        campaign.message = isBanner ? one(texts) : one({"", one(texts)});
        campaign.image = one({"", "https:a.png"});
        campaign.buttons = several(3);
        for (const std::string& option : several(6)) campaign.feedbackOptions.emplace_back(option);
        campaign.style = {{"title", style()}, {"message", style()}, {"ctas", List{style(), style()}}};
        if (random() % 2) campaign.style.set("layoutBackgroundColor", "#FFF8E7");
        screen = one(screens);
        screen.textScale = one(std::vector{1.0, 1.37, 2.0, 3.0});
        view = std::make_shared<HostingController<InAppMessageView>>(
            std::make_shared<InAppMessageView>(campaign.shared(), nullptr));
        view->setTraits(screen);
        for (int layout = 0; layout < 2; ++layout) view->evaluate(measurer);
    }

    template <typename Choice>
    Choice one(const std::vector<Choice>& choices) {
        return choices[random() % choices.size()];
    }
    std::string one(const Texts& choices) { return one<std::string>(choices); }
    Texts several(int most) {
        Texts chosen(random() % static_cast<unsigned>(most + 1));
        for (std::string& text : chosen) text = one(texts);
        return chosen;
    }

    /// The controls of the settled layout; cards, rows and pictures are none.
    std::vector<AccessibleElement> controls() const {
        auto found = view->elements();
        std::erase_if(found, [](const auto& each) {
            return !takesTaps(each.role) || isContainer(each.role) || each.role == Role::image;
        });
        return found;
    }
    /// The control's frame, in view.
    Rect scrolledTo(const AccessibleElement& control) const {
        aimAt(*view, control);
        for (const auto& each : controls()) {
            if (name(each) == name(control)) return each.frame;
        }
        return {};
    }
    /// The control that a touch meets, by role and number; empty beside them.
    std::string controlAt(Point point) const {
        auto met = view->hitTest(point).element;
        for (const auto& control : controls()) {
            if (met && met->role == control.role && met->index == control.index) return name(control);
        }
        return {};
    }
    static std::string name(const AccessibleElement& element) {
        return roleName(element.role) + ' ' + std::to_string(element.index);
    }
    /// How far touches from a point on mean the same control; infinite up to another control, or the end of the window.
    double reach(Point from, double dx, double dy) const {
        const std::string self = controlAt(from);
        double distance = 0;
        while (distance < 44 && controlAt({from.x + dx * distance, from.y + dy * distance}) == self) distance += 0.5;
        Point end{from.x + dx * distance, from.y + dy * distance};
        return controlAt(end).empty() && Rect{{}, screen.size}.contains(end) ? distance : infinity;
    }

    std::mt19937 random;
    Campaign campaign;
    SceneTraits screen;
    FixedTextMeasurer measurer;
    std::shared_ptr<HostedView> view;
};

class TemplateWalkTest : public ModuleTest {
protected:
    /// Fails at the first message of many with an offence, in words.
    template <typename Offence>
    static void expectNone(Offence offence) {
        for (unsigned seed = 0; seed < 400; ++seed) {
            Walk walk(seed);
            ASSERT_EQ(offence(walk), "") << toJSON(walk.campaign.push()) << " on " << walk.screen.size.width << 'x'
                                         << walk.screen.size.height << ", text " << walk.screen.textScale;
        }
    }
};

}  // namespace

TEST_F(TemplateWalkTest, PaintedEdgesLieOnDevicePixels) {
    expectNone([](Walk& walk) {
        walk.view->scroll(33.4);
        return edgesBetweenPixels(*walk.view, walk.screen.scale);
    });
}

TEST_F(TemplateWalkTest, TargetsAreFortyFourPointsWhereNothingElseIs) {
    expectNone([](Walk& walk) -> std::string {
        for (const auto& control : walk.controls()) {
            Point from = walk.scrolledTo(control).center();
            if (walk.controlAt(from) != walk.name(control)) return walk.name(control) + " is covered";
            double width = walk.reach(from, -1, 0) + walk.reach(from, 1, 0);
            double height = walk.reach(from, 0, -1) + walk.reach(from, 0, 1);
            if (std::min(width, height) < 44) return walk.name(control) + " is small";
        }
        return {};
    });
}

TEST_F(TemplateWalkTest, TargetsDoNotReachIntoOtherControls) {
    expectNone([](Walk& walk) -> std::string {
        for (const auto& control : walk.controls()) {
            Rect frame = walk.scrolledTo(control).inset({0.5, 0.5, 0.5, 0.5});
            for (double x : {frame.minX(), frame.center().x, frame.maxX()}) {
                for (double y : {frame.minY(), frame.center().y, frame.maxY()}) {
                    std::string met = walk.controlAt({x, y});
                    if (!met.empty() && met != walk.name(control)) return met + " reaches into " + walk.name(control);
                }
            }
        }
        return {};
    });
}

TEST_F(TemplateWalkTest, TextsStayInsideTheirCard) {
    expectNone([](Walk& walk) -> std::string {
        Rect card;
        for (const auto& element : walk.view->elements()) card = element.role == Role::card ? element.frame : card;
        for (const DisplayItem& item : walk.view->displayList()) {
            auto text = std::get_if<DrawText>(&item);
            if (!text) continue;
            Size size = walk.measurer.layOut(text->text, text->font, infinity).size;
            Rect frame{{text->origin.x, text->origin.y - text->font.size}, size};
            Size inside = frame.intersection(card).size;
            if (inside.width < size.width - 0.01 || inside.height < size.height - 0.01) return text->text;
        }
        return {};
    });
}
