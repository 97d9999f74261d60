#include "VantixQt/Drawing/QtTextMeasurer.h"

#include "VantixQt/Drawing/RequiredApplication.h"

#include <QFontMetricsF>
#include <QStringView>
#include <QTextLayout>

#include <algorithm>
#include <optional>

namespace vantix {

namespace {

constexpr qsizetype longestLine = 4096;

/// Qt counts in 64ths of a pixel and rounds the offered width down; without this, a text would not fit into the very
/// width that was measured for it.
constexpr double roundingSlack = 1.0 / 32;

bool isLineBreak(QChar character) {
    constexpr QStringView breaks = u"\n\r\v\f\u0085\u2028\u2029";
    return breaks.contains(character);
}

bool isBlank(QChar character) {
    constexpr QStringView visible = u"\t\u00A0\u2007\u202F";
    return character.isSpace() && !visible.contains(character);
}

QStringView withoutTrailingBlanks(QStringView text) {
    while (!text.isEmpty() && isBlank(text.back())) text.chop(1);
    return text;
}

/// Whether the letters on both sides of a place within a text are written joined, as in Arabic.
bool joinsAt(QStringView text, qsizetype place) {
    if (place <= 0 || place >= text.size()) return false;
    qsizetype letter = place - 1;
    while (letter > 0 && text[letter].joiningType() == QChar::Joining_Transparent) --letter;
    QChar::JoiningType before = text[letter].joiningType();
    QChar::JoiningType after = text[place].joiningType();
    return (before == QChar::Joining_Dual || before == QChar::Joining_Causing) &&
           (after == QChar::Joining_Dual || after == QChar::Joining_Causing || after == QChar::Joining_Right);
}

/// What stands on a line. Letters that were joined to those of a neighbouring line keep their joined forms, with which
/// the line was measured.
std::string lineText(QStringView text, qsizetype start, qsizetype length) {
    constexpr char16_t zeroWidthJoiner = u'\u200D';
    QString result = withoutTrailingBlanks(text.sliced(start, length)).toString();
    if (joinsAt(text, start)) result.prepend(zeroWidthJoiner);
    if (joinsAt(text, start + length)) result.append(zeroWidthJoiner);
    return result.toStdString();
}

/// Takes the first paragraph, with its line break, off the text. Absent after the last one.
std::optional<QStringView> takeParagraph(std::optional<QStringView>& text) {
    if (!text) return std::nullopt;
    auto end = std::find_if(text->begin(), text->end(), isLineBreak);
    qsizetype length = end - text->begin();
    QStringView paragraph = text->first(length);
    if (end == text->end()) {
        text.reset();
    } else {
        qsizetype breakLength = text->sliced(length).startsWith(u"\r\n") ? 2 : 1;
        text = text->sliced(length + breakLength);
    }
    return paragraph;
}

/// The first part of a paragraph that is laid out at once: a bound keeps the time linear and Qt's numbers in range.
QStringView chunk(QStringView paragraph) {
    if (paragraph.size() <= longestLine) return paragraph;
    QStringView part = paragraph.first(longestLine);
    if (part.back().isHighSurrogate()) part.chop(1);
    return part;
}

/// Collects the lines of one text in the units of the reference font.
class LineBreaker {
public:
    LineBreaker(const ReferenceFont& font, double maximumWidth, bool rightToLeft)
        : font_(font.font),
          scale_(font.scale),
          maximumWidth_(maximumWidth),
          option_(TextShaping::option(rightToLeft, QTextOption::WrapAtWordBoundaryOrAnywhere)) {
        QFontMetricsF metrics(font_);
        ascent_ = metrics.ascent();
        descent_ = metrics.descent();
        leading_ = std::max(0.0, metrics.leading());
    }

    void addParagraph(QStringView paragraph) {
        paragraph = withoutTrailingBlanks(paragraph);
        do {
            paragraph = paragraph.sliced(addLines(chunk(paragraph), paragraph.size()));
        } while (!paragraph.isEmpty());
    }

    TextLayout finish(bool rightToLeft) && {
        TextLayout layout;
        for (const TextLine& line : lines_) layout.size.width = std::max(layout.size.width, line.width);
        layout.lineHeight = (ascent_ + descent_ + leading_) * scale_;
        layout.size.height = layout.lineHeight * static_cast<double>(lines_.size());
        layout.ascent = (ascent_ + leading_ / 2) * scale_;
        layout.rightToLeft = rightToLeft;
        layout.lines = std::move(lines_);
        return layout;
    }

private:
    /// Breaks `text`, the beginning of a paragraph of `remaining` units, and returns how much of it became lines: when
    /// more follows, its last line is not complete and is left for the next time.
    qsizetype addLines(QStringView text, qsizetype remaining) {
        QTextLayout layout(text.toString(), font_);
        layout.setTextOption(option_);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(maximumWidth_ / scale_ + roundingSlack);
            bool isIncomplete = line.textStart() + line.textLength() == text.size() && text.size() < remaining;
            if (isIncomplete && line.textStart() > 0) return line.textStart();
            addLine(line, text);
        }
        layout.endLayout();
        return text.size();
    }

    void addLine(const QTextLine& line, QStringView text) {
        double width = line.naturalTextWidth() * scale_;
        if (width <= maximumWidth_ + roundingSlack * scale_) width = std::min(width, maximumWidth_);
        lines_.push_back({lineText(text, line.textStart(), line.textLength()), width});
        ascent_ = std::max(ascent_, line.ascent());
        descent_ = std::max(descent_, line.descent());
    }

    QFont font_;
    double scale_;
    double maximumWidth_;
    QTextOption option_;
    std::vector<TextLine> lines_;
    double ascent_ = 0;
    double descent_ = 0;
    double leading_ = 0;
};

}  // namespace

QtTextMeasurer::QtTextMeasurer(std::shared_ptr<const QtFontCatalogue> catalogue) : shaping_(std::move(catalogue)) {
    requireApplication("QtTextMeasurer");
}

TextLayout QtTextMeasurer::layOut(std::string_view text, const Font& font, double maximumWidth) const {
    QString content = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    bool rightToLeft = content.isRightToLeft();
    LineBreaker breaker(shaping_.font(font), std::max(0.0, maximumWidth), rightToLeft);
    std::optional<QStringView> rest = content;
    while (auto paragraph = takeParagraph(rest)) breaker.addParagraph(*paragraph);
    return std::move(breaker).finish(rightToLeft);
}

}  // namespace vantix
