#pragma once

#include <QStringView>

#include <functional>

namespace vantix {

/// Calls for each code point until `visit` returns false; returns whether it never did.
bool forEachCharacter(QStringView text, const std::function<bool(char32_t)>& visit);

/// Calls for each character as its reader sees it: a letter with its marks, a flag, a family of emoji.
void forEachCluster(QStringView text, const std::function<void(QStringView)>& visit);

/// Whether a cluster is meant as a coloured picture.
bool isEmoji(QStringView cluster);

/// Whether a cluster is Chinese, Japanese or Korean, punctuation included.
bool isCJK(QStringView cluster);

}  // namespace vantix
