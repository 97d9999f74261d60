#pragma once

namespace vantix::InAppMessagePayloadKeys {

inline constexpr const char* title = "title";
inline constexpr const char* message = "message";
inline constexpr const char* ctas = "ctas";
inline constexpr const char* phoneBackgroundColor = "phoneBackgroundColor";
inline constexpr const char* layoutBackgroundColor = "layoutBackgroundColor";
inline constexpr const char* rating = "rating";
inline constexpr const char* textColor = "textColor";
inline constexpr const char* textSize = "textSize";
inline constexpr const char* textFont = "textFont";
inline constexpr const char* textStyle = "textStyle";
inline constexpr const char* backgroundColor = "backgroundColor";
inline constexpr const char* starSelectedColor = "selectedColor";
inline constexpr const char* starNotSelectedColor = "unselectedColor";
/// Does not name the constant that bears it: "template" is a word of the language.
inline constexpr const char* templateKey = "template";
inline constexpr const char* feedbackOptions = "feedbackOptions";
inline constexpr const char* selectionType = "selectionType";
inline constexpr const char* options = "options";

}  // namespace vantix::InAppMessagePayloadKeys
