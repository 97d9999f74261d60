#include "Tools/vantix-inapp/Simulate/EventLog.h"

#include "Platform/Values/ControlCharacters.h"
#include "Tools/vantix-inapp/Output/StandardOutput.h"
#include "VantixQt/Host.h"

#include <QJsonDocument>
#include <QTime>

#include <optional>

namespace vantix {

namespace {

constexpr int mostLines = 5000;

/// Beyond it the screen shows the beginning alone.
constexpr qsizetype longestText = 300;

std::optional<QColor> colorOf(const QString& kind) {
    if (kind == "log") return Qt::gray;
    if (kind == "problem") return Qt::red;
    if (kind == "report") return Qt::darkGreen;
    if (kind == "request") return Qt::darkCyan;
    return {};
}

QString compact(const QJsonObject& object) { return QJsonDocument(object).toJson(QJsonDocument::Compact); }

QString inOneLine(const QString& text) {
    return QString::fromStdString(withEscapedControlCharacters(text.toStdString()));
}

}  // namespace

EventLog::EventLog(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setMaximumBlockCount(mostLines);
    setAccessibleName(tr("Log"));
}

void EventLog::follow(qt::Host& host) {
    connect(&host, &qt::Host::messageShown, this, [this](const QString& scope) { add("shown", scope); });
    connect(&host, &qt::Host::messageGone, this, [this](const QString& scope) { add("gone", scope); });
    connect(&host, &qt::Host::deepLinkActivated, this, [this](const QUrl& link) { add("deepLink", link.toString()); });
    connect(&host, &qt::Host::urlActivated, this, [this](const QUrl& address) { add("opened", address.toString()); });
    connect(&host, &qt::Host::reported, this, [this](const QString& name, const QVariantMap& attributes) {
        addNamed("report", name, QJsonObject::fromVariantMap(attributes));
    });
    connect(&host, &qt::Host::requestSent, this,
            [this](const QString& method, const QUrl& address, const QString& body) {
                add("request", QJsonObject{{"method", method}, {"url", address.toString()}, {"body", body}},
                    inOneLine(method + " " + address.toString() + "  " + body));
            });
    // Lines come from any thread.
    VantixLogger::setSink([this](const LogLine& line) {
        QMetaObject::invokeMethod(
            this, [this, line] { addLogLine(line); }, Qt::QueuedConnection);
    });
}

void EventLog::add(const QString& kind, const QJsonValue& what) { add(kind, what, inOneLine(what.toString())); }

void EventLog::add(const QString& kind, const QJsonValue& what, const QString& words) {
    printLine(compact({{kind, what}}).toStdString());
    QTextCharFormat format;
    format.setForeground(colorOf(kind).value_or(palette().color(QPalette::Text)));
    setCurrentCharFormat(format);
    QString text = words.size() > longestText ? words.left(longestText) + u'…' : words;
    appendPlainText(QTime::currentTime().toString("HH:mm:ss.zzz  ") + kind + "  " + text);
}

void EventLog::addEvent(const QString& name, const QVariantMap& attributes) {
    addNamed("event", name, QJsonObject::fromVariantMap(attributes));
}

void EventLog::addNamed(const QString& kind, const QString& name, const QJsonObject& attributes) {
    add(kind, QJsonObject{{"name", name}, {"attributes", attributes}}, inOneLine(name + "  " + compact(attributes)));
}

void EventLog::addLogLine(const LogLine& line) {
    auto word = logLevelWords.word(line.level);
    auto level = QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size()));
    auto file = QString::fromStdString(line.file);
    auto function = QString::fromStdString(line.function);
    auto message = QString::fromStdString(line.message);
    add("log", QJsonObject{{"level", level}, {"file", file}, {"function", function}, {"message", message}},
        level + "  " + file + "  " + function + "\n" + message);
}

}  // namespace vantix
