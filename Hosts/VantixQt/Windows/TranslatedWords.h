#pragma once

#include "DeclarativeUI/SpokenWords.h"

class QLocale;

namespace vantix::qt {

/// The known spoken words; those of the locale's language as the application's translators have them. The English words
/// are the source texts, in the context "vantix::qt::SpokenWords"; what no translator knows stays as it is known here.
SpokenWordTable translatedSpokenWords(const QLocale& locale);

}  // namespace vantix::qt
