#include <gtest/gtest.h>

#include <QWidget>

// Each case passes, and its process must fail all the same.

TEST(LeftBehind, Widget) {
    auto* widget = new QWidget;
    widget->setObjectName(QStringLiteral("forgotten"));
}

TEST(LeftBehind, WidgetThatDeletesItselfLater) {
    (new QWidget)->deleteLater();
}

TEST(LeftBehind, WarningOfAnObject) {
    auto* object = new QObject;
    QObject::connect(object, &QObject::destroyed, [] { qWarning("QObject: behind the last case"); });
    object->deleteLater();
}

TEST(LeftBehind, Memory) {
    volatile auto* lost = new int[1000];
    lost = nullptr;
    EXPECT_EQ(lost, nullptr);
}
