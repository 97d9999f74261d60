#include "tests/DeclarativeUI/Stage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace vantix {

namespace {

std::string number(double value) {
    std::ostringstream text;
    text << std::round(value * 100) / 100 + 0.0;
    return text.str();
}

std::string describe(const Rect& frame) {
    return number(frame.minX()) + "," + number(frame.minY()) + " " + number(frame.size.width) + "x" +
           number(frame.size.height);
}

}  // namespace

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
        if (element.role != Role::mark) continue;
        list += (list.empty() ? "" : " | ") + element.label + " " + describe(element.frame);
    }
    return list;
}

View mark(const std::string& name, std::optional<double> width, std::optional<double> height) {
    return ColorRectangle(Color::clear()).frame({.width = width, .height = height}).element(Role::mark, name);
}

View words(const std::string& text) { return Text(text).font(Font::system(20)); }

}  // namespace vantix
