#include "tests/Support/PaintedEdges.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <random>

using namespace vantix;

namespace {

const std::vector<SceneTraits> screens{{{390, 844}, {47, 0, 34, 0}, 3},
                                       {{844, 390}, {0, 47, 21, 47}, 3},
                                       {{667, 375}, {}, 1.5},
                                       {{820, 1180}, {24, 0, 20, 0}, 1},
                                       {{357.3, 411.7}, {20.2, 0, 13.1, 5.3}, 2.75}};
const Texts types{"POPUP", "FULLSCREEN", "HEADER", "FOOTER", "RATING", "FEEDBACK", "APPRATING"};
const Texts texts{"Hello",      "A message whose words take several lines, on a phone that is held upright at least",
                  "สวัสดีชาวโลก", "مرحبا بالعالم هذا نص طويل جدا لكي ينكسر على أسطر كثيرة",
                  "你好,世界",  "Donaudampfschifffahrtsgesellschaftskapitänsmützen",
                  "안녕하세요", "👩🏽‍🚀🇫🇷 🎉"};

/// A random message on a random screen: the same for the same seed.
struct Walk {
    explicit Walk(unsigned seed) : random(seed) {
        campaign.type = one(types);
        campaign.title = one(Texts{"", one(texts)});
        campaign.message = one(Texts{seed % 2 ? one(texts) : "", one(texts)});
        campaign.image = one(Texts{"", "https:a.png"});
        campaign.buttons.assign(random() % 4, one(texts));
        for (auto left = random() % 6; left > 0; --left) campaign.feedbackOptions.emplace_back(one(texts));
        const Dictionary colored{{"backgroundColor", "#3366FF"}, {"textSize", "9"}}, large{{"textSize", "31"}};
        auto style = [&] { return one(std::vector{Dictionary(), colored, large}); };
        campaign.style = {{"title", style()}, {"message", style()}, {"ctas", List{style(), style()}}};
        if (seed % 3) campaign.style.set("layoutBackgroundColor", "#FFF8E7");
        screen = one(screens);
        screen.textScale = one(std::vector{1.0, 1.37, 2.0, 3.0});
        view = std::make_shared<HostedView>(
            [root = std::make_shared<InAppMessageView>(campaign.shared(), nullptr)] { return root->body(); });
        view->setTraits(screen);
        for (int layout = 0; layout < 2; ++layout) view->evaluate(measurer);
    }

    template <typename Choice>
    Choice one(const std::vector<Choice>& choices) {
        return choices[random() % choices.size()];
    }

    /// By role and number; empty for all that is no control: cards, rows, pictures.
    static std::string control(const AccessibleElement& element) {
        bool isControl = takesTaps(element.role) && !isContainer(element.role) && element.role != Role::image;
        return isControl ? roleName(element.role) + ' ' + std::to_string(element.index) : "";
    }
    std::string controlAt(Point point) const {
        return control(view->hitTest(point).element.value_or(AccessibleElement()));
    }
    /// How far touches from a point on mean this control; infinite up to another one and to the end of what is in view.
    double reach(const std::string& name, Point point, double dx, double dy) const {
        double distance = 0;
        for (; distance < 44 && controlAt(point) == name; distance += 0.5) point = {point.x + dx, point.y + dy};
        return controlAt(point).empty() && view->scrollArea().viewport.contains(point) ? distance : infinity;
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
        for (unsigned seed = 0; seed < 500; ++seed) {
            Walk walk(seed);
            ASSERT_EQ(offence(walk), "") << toJSON(walk.campaign.push()) << " on " << walk.screen.size.width << 'x'
                                         << walk.screen.size.height << ", text " << walk.screen.textScale;
        }
    }
};

}  // namespace

TEST_F(TemplateWalkTest, PaintedEdgesLieOnDevicePixels) {
    expectNone([](const Walk& walk) {
        walk.view->scroll(33.4);
        return edgesBetweenPixels(*walk.view, walk.screen.scale);
    });
}

TEST_F(TemplateWalkTest, TargetsHaveRoomForAFingerAndKeepOutOfOneAnother) {
    expectNone([](const Walk& walk) -> std::string {
        const auto elements = walk.view->elements();
        for (std::size_t at = 0; at < elements.size(); ++at) {
            const std::string name = walk.control(elements[at]);
            if (name.empty()) continue;
            aimAt(*walk.view, elements[at]);
            Rect frame = walk.view->elements()[at].frame;
            Point middle = frame.center();
            if (walk.controlAt(middle) != name) return name + " is covered";
            for (double x : {frame.minX() + 0.5, middle.x, frame.maxX() - 0.5}) {
                for (double y : {frame.minY() + 0.5, middle.y, frame.maxY() - 0.5}) {
                    auto met = walk.view->hitTest({x, y}).element.value_or(elements[at]);
                    bool isOther = !walk.control(met).empty() && walk.control(met) != name;
                    // A frame of 44 points is a control's own, even where it lies over another's.
                    if (isOther && !met.frame.contains({x, y})) return walk.control(met) + " reaches into " + name;
                }
            }
            double width = walk.reach(name, middle, -0.5, 0) + walk.reach(name, middle, 0.5, 0);
            double height = walk.reach(name, middle, 0, -0.5) + walk.reach(name, middle, 0, 0.5);
            if (std::min(width, height) < 44) return name + " is small";
        }
        return {};
    });
}

TEST_F(TemplateWalkTest, TextsStayInsideTheirCard) {
    expectNone([](const Walk& walk) -> std::string {
        Rect card;
        for (const auto& element : walk.view->elements()) card = element.role == Role::card ? element.frame : card;
        for (const DisplayItem& item : walk.view->displayList()) {
            auto text = std::get_if<DrawText>(&item);
            if (!text) continue;
            Size size = walk.measurer.layOut(text->text, text->font, infinity).size;
            Size inside = Rect{{text->origin.x, text->origin.y - text->font.size}, size}.intersection(card).size;
            if (inside.width < size.width - 0.01 || inside.height < size.height - 0.01) return text->text;
        }
        return {};
    });
}
