#include "DeclarativeUI/ImageSource.h"
#include "tests/DeclarativeUI/Stage.h"
#include "tests/Support/PaintedEdges.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

using namespace vantix;

namespace {

/// Trees of all that paints, of awkward lengths; the same for the same seed.
class RandomTree {
public:
    explicit RandomTree(unsigned seed) : random_(seed) {}

    View view(int depth) {
        const unsigned kind = below(4);
        if (depth == 0) return leaf(kind);
        if (kind == 0) return modified(view(depth - 1));
        if (kind == 1) return HStack(VerticalAlignment::center, length() / 5, views(depth - 1));
        if (kind == 2) return ZStack(Alignment::center(), views(depth - 1));
        return VStack(HorizontalAlignment::center, length() / 5, views(depth - 1));
    }
    double length() { return 1 + below(400) / 9.0; }
    unsigned below(unsigned bound) { return static_cast<unsigned>(random_()) % bound; }

private:
    View leaf(unsigned kind) {
        if (kind == 0) return Text(std::string(1 + below(80), 'a')).font(Font::system(length()));
        if (kind == 1) return StrokedCircle(red, 1).frame({.width = length()});
        if (kind == 2) return SourcedImage(std::make_shared<Picture>(), 0.3 + below(30) / 7.0, 5);
        return VStack({Divider().element(Role::divider), SymbolImage("star.fill").font(Font::system(length()))});
    }
    View modified(const View& content) {
        const unsigned kind = below(4);
        if (kind == 0) return content.padding(Edge::leading | Edge::top, length() / 3);
        if (kind == 1) return content.frame({.maxWidth = infinity, .alignment = Alignment::topTrailing()});
        if (kind == 2) return content.frame({.width = 3 * length(), .height = 2 * length()}).background(blue);
        return content.background(red).cornerRadius(length() / 5).overlay(Alignment::center(), leaf(below(4)));
    }

    struct Picture final : ImageSource {
        Image currentImage() const override {
            Image image = systemSymbol("star.fill");
            image.naturalSize = {37, 23};
            return image;
        }
        void needed(int, int) override {}
    };

    std::vector<View> views(int depth) {
        std::vector<View> all;
        for (unsigned left = 1 + below(4); left > 0; --left) all.push_back(view(depth));
        return all;
    }

    std::mt19937 random_;
};

}  // namespace

TEST(PixelGridTest, HoldsEveryPaintedEdgeOfRandomTreesEvenWhenScrolled) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        RandomTree tree(seed);
        const double scale = std::array{1.0, 1.5, 2.0, 2.75, 3.0}[seed % 5];
        SceneTraits traits{{300 + tree.length(), 200 + tree.length()}, {tree.length(), 0, tree.length(), 3}, scale, 1};
        View root = ScrollView(tree.view(5)).background(blue);
        if (seed % 3 == 0) root = root.layoutDirection(LayoutDirection::rightToLeft);
        Stage stage(traits, root);
        stage.view().scroll(tree.length());
        ASSERT_EQ(edgesBetweenPixels(stage.view(), scale), "") << "seed " << seed << " at " << scale;
    }
}

TEST(PixelGridTest, LeavesNeighboursWithoutGapOrOverlap) {
    for (double scale : {1.0, 1.5, 2.0, 2.75, 3.0}) {
        for (int count = 1; count < 12; ++count) {
            View cell = ColorRectangle(red).padding(0);
            std::vector<View> cells(static_cast<std::size_t>(count), cell);
            View row = HStack(VerticalAlignment::center, 0, cells).frame({.width = 101.3, .height = 20});
            Stage stage({{320.3, 200.7}, {}, scale, 1}, row.background(blue));
            const auto& list = stage.view().displayList();
            Rect whole = std::get<FillRect>(list.front()).frame;
            double at = whole.minX();
            for (std::size_t cellAt = 1; cellAt < list.size(); ++cellAt) {
                Rect frame = std::get<FillRect>(list[cellAt]).frame;
                EXPECT_NEAR(frame.minX(), at, 1e-6);
                at = frame.maxX();
            }
            EXPECT_NEAR(at, whole.maxX(), 1e-6) << count << " at " << scale;
        }
    }
}
