#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <sstream>

namespace vantix {

namespace {

std::string number(double value) {
    std::ostringstream text;
    text << std::round(value * 100) / 100 + 0.0;
    return text.str();
}

std::string describe(Point point) { return number(point.x) + "," + number(point.y); }

std::string colorText(const Color& color) {
    char text[16];
    auto byte = [](double part) { return static_cast<unsigned>(std::lround(part * 255)); };
    std::snprintf(text, sizeof text, " #%02x%02x%02x", byte(color.red), byte(color.green), byte(color.blue));
    return text;
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

std::string describe(const Rect& frame) {
    return describe(frame.origin) + " " + number(frame.size.width) + "x" + number(frame.size.height);
}

AccessibleElement Stage::element(Role role, int index) const {
    for (const AccessibleElement& element : view_->elements()) {
        if (element.role == role && element.index == index) return element;
    }
    ADD_FAILURE() << "no element " << roleName(role) << " " << index;
    return {};
}

std::string Stage::met(Point point) const {
    auto met = view_->hitTest(point);
    if (!met.action) return "nothing";
    return met.element ? roleName(met.element->role) + ' ' + std::to_string(met.element->index) : "something";
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
