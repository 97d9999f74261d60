#include "VantixQt/QtValues.h"

#include "Platform/Values/JSON.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <string_view>

namespace vantix::qt {

std::vector<std::string> texts(const QStringList& list) {
    std::vector<std::string> result;
    for (const QString& text : list) result.push_back(text.toStdString());
    return result;
}

Dictionary dictionary(const QVariantMap& map) {
    QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact);
    auto parsed = parseJSON({text.constData(), static_cast<std::size_t>(text.size())});
    auto result = parsed ? parsed.value().dictionary() : nullptr;
    return result ? *result : Dictionary();
}

QVariantMap variantMap(const Dictionary& dictionary) {
    std::string text = toJSON(dictionary);
    return QJsonDocument::fromJson(QByteArray::fromStdString(text)).object().toVariantMap();
}

}  // namespace vantix::qt
