#include <QGuiApplication>
#include <QLoggingCategory>
#include <gtest/gtest.h>

namespace {

/// A QGuiApplication for all cases of a test program.
struct HeadlessQt final : testing::Environment {
    void SetUp() override {
        QLoggingCategory::setFilterRules("*.debug=false\n*.info=false\n*.warning=false");
        static int count = 1;
        static char name[] = "test";
        static char* arguments[] = {name, nullptr};
        static auto& application = *new QGuiApplication(count, arguments);
        static_cast<void>(application);
    }
};

const auto environment = testing::AddGlobalTestEnvironment(new HeadlessQt);

}  // namespace
