#include "support/Click.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

namespace {

class ClickTest : public ::testing::Test {
protected:
    ClickTest() {
        window.resize(200, 100);
        button->setGeometry(10, 10, 80, 30);
        button->setObjectName(QStringLiteral("target"));
        QObject::connect(button, &QPushButton::clicked, [this] { ++clicks; });
        window.show();
    }

    QWidget window;
    QPushButton* button = new QPushButton(&window);
    int clicks = 0;
};

}  // namespace

TEST_F(ClickTest, AVisibleButtonIsHit) {
    Click(button);
    Click(button);

    EXPECT_EQ(clicks, 2);
}

TEST_F(ClickTest, AHiddenButtonIsNot) {
    button->hide();

    EXPECT_NONFATAL_FAILURE(Click(button), "QPushButton \"target\" is hidden");
    EXPECT_EQ(clicks, 0);
}

TEST_F(ClickTest, AButtonInAHiddenWindowIsNot) {
    window.hide();

    EXPECT_NONFATAL_FAILURE(Click(button), "is hidden");
}

TEST_F(ClickTest, ADisabledButtonIsNot) {
    button->setEnabled(false);

    EXPECT_NONFATAL_FAILURE(Click(button), "is disabled");
}

TEST_F(ClickTest, CoveredButtonIsNotClickedAndTheCoverIsNamed) {
    auto* cover = new QLabel(&window);
    cover->setObjectName(QStringLiteral("cover"));
    cover->setGeometry(window.rect());
    cover->show();

    EXPECT_NONFATAL_FAILURE(Click(button), "is covered by QLabel \"cover\"");
    EXPECT_EQ(clicks, 0);
}

TEST_F(ClickTest, ACoverThatLetsTheMouseThroughDoesNotMatter) {
    auto* cover = new QLabel(&window);
    cover->setAttribute(Qt::WA_TransparentForMouseEvents);
    cover->setGeometry(window.rect());
    cover->show();

    Click(button);

    EXPECT_EQ(clicks, 1);
}

TEST_F(ClickTest, AButtonOutsideOfItsWindowIsNot) {
    button->move(500, 10);

    EXPECT_NONFATAL_FAILURE(Click(button), "is outside of its window");
}

TEST_F(ClickTest, AButtonThatItsParentCutsOffIsNot) {
    QWidget frame(&window);
    frame.setGeometry(0, 50, 20, 20);
    button->setParent(&frame);
    button->move(30, 0);
    button->show();
    frame.show();

    EXPECT_NONFATAL_FAILURE(Click(button), "is out of sight");
}

TEST_F(ClickTest, AButtonBehindAModalDialogIsNot) {
    QDialog dialog(&window);
    dialog.open();

    EXPECT_NONFATAL_FAILURE(Click(button), "is held back by the modal window");
    EXPECT_EQ(clicks, 0);
}

TEST_F(ClickTest, APressMayDeleteTheWindow) {
    auto popup = std::make_unique<QWidget>();
    auto* close = new QPushButton(popup.get());
    close->setGeometry(0, 0, 50, 20);
    QObject::connect(close, &QPushButton::pressed, [&] { popup.reset(); });
    popup->resize(100, 100);
    popup->show();

    Click(close);

    EXPECT_EQ(popup, nullptr);
}
