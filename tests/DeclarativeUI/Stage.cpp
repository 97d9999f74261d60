#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <sstream>

namespace vantix {

namespace {

std::string number(double value) {
    std::ostringstream text;
    double rounded = std::round(value * 100) / 100;
    text << (rounded == 0 ? 0 : rounded);
    return text.str();
}

std::string colorText(const Color& color) {
    std::ostringstream text;
    text << " #" << std::hex << std::setfill('0');
    for (double part : {color.red, color.green, color.blue}) text << std::setw(2) << std::lround(part * 255);
    return text.str();
}

std::string radius(double cornerRadius) { return cornerRadius > 0 ? " r" + number(cornerRadius) : ""; }

struct ItemDescriber {
    std::string operator()(const FillRect& item) const {
        return "fill " + describe(item.frame) + colorText(item.color) + radius(item.cornerRadius);
    }
    std::string operator()(const FillEllipse& item) const {
        return "disc " + describe(item.frame) + colorText(item.color);
    }
    std::string operator()(const StrokeEllipse& item) const {
        return "ring " + describe(item.frame) + colorText(item.color) + " w" + number(item.lineWidth);
    }
    std::string operator()(const DrawText& item) const {
        return "text " + describe(item.origin) + " '" + item.text + "'" + (item.rightToLeft ? " rtl" : "");
    }
    std::string operator()(const DrawImage& item) const {
        return "image " + describe(item.frame) + (item.tint ? colorText(*item.tint) : "");
    }
    std::string operator()(const PushClip& item) const {
        return "clip " + describe(item.frame) + radius(item.cornerRadius);
    }
    std::string operator()(const PopClip&) const { return "unclip"; }
};

void join(std::string& list, const std::string& item) { list += (list.empty() ? "" : " | ") + item; }

}  // namespace

std::string describe(Point point) { return number(point.x) + "," + number(point.y); }

std::string describe(const Rect& frame) {
    return describe(frame.origin) + " " + number(frame.size.width) + "x" + number(frame.size.height);
}

std::string describe(const HostedView::TapResult& met) {
    if (!met.action) return "nothing";
    if (!met.element) return "something";
    return std::string(roleName(met.element->role)) + ' ' + std::to_string(met.element->index);
}

AccessibleElement Stage::element(Role role, int index) const {
    for (const AccessibleElement& element : view_->elements()) {
        if (element.role == role && element.index == index) return element;
    }
    ADD_FAILURE() << "no element " << roleName(role) << " " << index;
    return {};
}

std::string Stage::marks() const {
    std::string list;
    for (const AccessibleElement& element : view_->elements()) {
        if (element.role == Role::mark) join(list, element.label + " " + describe(element.frame));
    }
    return list;
}

std::string Stage::drawing() const {
    std::string list;
    for (const DisplayItem& item : view_->displayList()) join(list, std::visit(ItemDescriber(), item));
    return list;
}

View mark(const std::string& name, std::optional<double> width, std::optional<double> height) {
    return ColorRectangle(Color::clear()).frame({.width = width, .height = height}).element(Role::mark, name);
}

View words(const std::string& text) { return Text(text).font(Font::system(20)); }

}  // namespace vantix
