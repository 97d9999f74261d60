#pragma once

#include "Platform/Values/Value.h"

#include <QStringList>
#include <QVariantMap>

#include <string>
#include <vector>

namespace vantix::qt {

std::vector<std::string> texts(const QStringList& list);

/// What JSON can say of the map; everything else is null.
Dictionary dictionary(const QVariantMap& map);

/// Numbers, texts, lists and maps as the toolkit has them. Of an opaque value nothing is left.
QVariantMap variantMap(const Dictionary& dictionary);

}  // namespace vantix::qt
