#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Headless/Devices.h"
#include "tests/Pictures/PictureComparison.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/RunningProgram.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <sstream>

using namespace vantix;

namespace {

/// One message on one device; what is tapped before the picture is taken.
struct Subject {
    const char* campaign;
    const char* device;
    std::vector<const char*> taps = {};

    std::string name() const { return std::string(campaign) + "-on-" + device; }
};

std::ostream& operator<<(std::ostream& stream, const Subject& subject) { return stream << subject.name(); }

const Subject subjects[] = {
    {"popup", "phone"},
    {"popup", "tablet"},
    {"full-screen", "phone"},
    {"full-screen", "phone-small-landscape"},
    {"header", "phone"},
    {"header", "phone-landscape"},
    {"footer", "phone"},
    {"footer", "phone-small-landscape"},
    {"rating", "phone", {R"({"role": "star", "label": "3"})"}},
    {"rating", "tablet"},
    {"feedback-single", "phone", {R"({"role": "option", "index": 0})", R"({"role": "option", "index": 1})"}},
    {"feedback-single", "phone-small-landscape", {R"({"role": "option", "index": 2})"}},
    {"feedback-multiple", "phone", {R"({"role": "option", "index": 0})", R"({"role": "option", "index": 2})"}},
    {"feedback-multiple", "tablet"},
    {"app-rating", "phone"},
    {"app-rating", "phone-small-landscape"},
};

/// A hill in front of the sun.
std::string messagePicture() {
    QImage picture(320, 180, QImage::Format_RGB32);
    picture.fill(QColor("#F6C667"));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor("#E4572E"));
    painter.drawEllipse(QPointF(200, 90), 45, 45);
    painter.setBrush(QColor("#2E5E4E"));
    painter.drawEllipse(QPointF(110, 230), 190, 130);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.save(&buffer, "PNG");
    return bytes.toStdString();
}

std::string withReplaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

double number(const Value& value) { return value.integer() ? static_cast<double>(*value.integer()) : *value.real(); }

QRect frameOf(const List& sides) {
    return QRectF(number(sides[0]), number(sides[1]), number(sides[2]), number(sides[3])).toAlignedRect();
}

/// The picture with what stands in the frame moved, together with a margin of what is around it.
QImage withMoved(const QImage& picture, const QRect& frame, QPoint by) {
    QImage result = picture;
    QRect withMargin = frame.adjusted(-4, -4, 4, 4) & picture.rect();
    QPainter painter(&result);
    painter.drawImage(withMargin.topLeft() + by, picture.copy(withMargin));
    return result;
}

QImage moved(const QImage& picture, QPointF by) {
    QImage result = picture;
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(by, picture);
    return result;
}

/// The picture with every pixel mixed with its neighbours, by half a pixel's way to one side and back.
QImage smoothed(const QImage& picture) { return moved(moved(picture, {0.5, 0.5}), {-0.5, -0.5}); }

class PictureTest : public testing::TestWithParam<Subject> {
protected:
    /// Plays the message, taps included, and takes its picture, one pixel for each point.
    QImage draw() {
        server.reply("/picture.png", {.body = messagePicture(), .headers = {{"Content-Type", "image/png"}}});
        std::string campaign = readFile(VANTIX_PICTURES "/campaigns/" + std::string(GetParam().campaign) + ".json");
        campaign = withReplaced(withReplaced(campaign, "PICTURE_URL", server.url("/picture.png")), "\n", " ");

        std::ostringstream steps;
        const SceneTraits& traits = deviceNamed(GetParam().device).traits;
        const EdgeInsets& safeArea = traits.safeArea;
        steps << R"({"configure": {"logLevel": "none", "device": {"scale": 1, "width": )" << traits.size.width
              << R"(, "height": )" << traits.size.height << R"(, "safeArea": [)" << safeArea.top << ", "
              << safeArea.left << ", " << safeArea.bottom << ", " << safeArea.right << "]}}}\n";
        steps << R"({"campaign": )" << campaign << "}\n";
        for (const char* tap : GetParam().taps) steps << R"({"tap": )" << tap << "}\n";
        steps << "{\"screenshot\": \"picture.png\"}\n{\"elements\": true}\n";

        auto run = runProgram({"play", "-"}, folder.path(), steps.str());
        EXPECT_EQ(run.errors, std::vector<std::string>{});
        EXPECT_EQ(run.status, 0);
        if (!run.output.empty()) readElements(run.output.back());
        return QImage(QString::fromStdString(folder.path() / "picture.png")).convertToFormat(QImage::Format_RGB32);
    }

    QImage stored() const { return QImage(QString::fromStdString(storedFile())).convertToFormat(QImage::Format_RGB32); }
    std::string storedFile() const { return VANTIX_PICTURES "/stored/" + GetParam().name() + ".png"; }

    struct Control {
        std::string role;
        QRect frame;
    };
    /// What can be touched in the picture that was drawn last.
    std::vector<Control> controls;

private:
    void readElements(const std::string& line) {
        auto parsed = parseJSON(line);
        ASSERT_TRUE(parsed) << line;
        for (const Value& element : *parsed.value().dictionary()->find("elements")->list()) {
            const Dictionary& description = *element.dictionary();
            std::string role = *description.find("role")->text();
            if (role != "button" && role != "close" && role != "star" && role != "option" && role != "image") continue;
            controls.push_back({role, frameOf(*description.find("frame")->list())});
        }
    }

    LoopbackServer server;
    TemporaryFolder folder;
};

}  // namespace

TEST_P(PictureTest, LooksAsStored) {
    QImage drawn = draw();
    if (std::getenv("VANTIX_STORE_PICTURES")) {
        ASSERT_TRUE(drawn.save(QString::fromStdString(storedFile()), "PNG"));
        GTEST_SKIP() << "stored anew: " << storedFile();
    }
    PictureComparison comparison(stored(), drawn);
    if (comparison.areAlike()) return;

    std::filesystem::create_directories(VANTIX_DIFFERENCES);
    std::string sheet = VANTIX_DIFFERENCES "/" + GetParam().name() + ".png";
    comparison.sideBySide().save(QString::fromStdString(sheet));
    ADD_FAILURE() << "differs by " << comparison.difference() << " of 255 around " << comparison.place().x() << ", "
                  << comparison.place().y() << "; stored, drawn and difference side by side: " << sheet;
}

TEST_P(PictureTest, PassesWhenEveryEdgeIsSmoothedDifferently) {
    QImage drawn = draw();
    PictureComparison comparison(drawn, smoothed(drawn));
    EXPECT_TRUE(comparison.areAlike()) << comparison.difference();
}

TEST_P(PictureTest, FailsWhenAControlMoves) {
    QImage drawn = draw();
    EXPECT_FALSE(controls.empty());
    for (const Control& control : controls) {
        QRect surroundings = control.frame.adjusted(-16, -16, 16, 16);
        if (!drawn.rect().contains(control.frame)) continue;
        for (QPoint by : {QPoint(0, 4), QPoint(0, -4), QPoint(4, 0), QPoint(-4, 0)}) {
            QImage displaced = withMoved(drawn, control.frame, by);
            PictureComparison comparison(drawn.copy(surroundings), displaced.copy(surroundings));
            EXPECT_FALSE(comparison.areAlike())
                << control.role << " at " << control.frame.x() << ", " << control.frame.y() << " moved by " << by.x()
                << ", " << by.y() << ": " << comparison.difference();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Pictures, PictureTest, testing::ValuesIn(subjects),
                         [](const auto& subject) { return withReplaced(subject.param.name(), "-", "_"); });
