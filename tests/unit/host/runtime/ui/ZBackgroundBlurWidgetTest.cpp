#include "ui/ZBackgroundBlurWidget.h"

#include <QPainter>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <cmath>
#include <limits>
#include <memory>

#include "KitTest.h"

using namespace ::testing;
using zrstdui::image_blur::WidgetPainterBufferSource;

namespace {

constexpr QRect kAll(0, 0, 200, 100);

/// A widget of two colours that meet in its middle.
class CHalves : public QWidget {
public:
    explicit CHalves(QWidget* parent, const QColor& left = Qt::black, const QColor& right = Qt::white)
        : QWidget(parent), m_left(left), m_right(right) {
        setGeometry(kAll);
    }

    void SetColors(const QColor& left, const QColor& right) {
        m_left = left;
        m_right = right;
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(0, 0, width() / 2, height(), m_left);
        painter.fillRect(width() / 2, 0, width() - width() / 2, height(), m_right);
    }

private:
    QColor m_left;
    QColor m_right;
};

/// A widget that counts its paint events.
class CCounting : public QWidget {
public:
    using QWidget::QWidget;
    int paints = 0;
    QColor color = Qt::black;

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        ++paints;
        QPainter(this).fillRect(rect(), color);
    }
};

/// A mask that paints a plate of its own and counts presses.
class CMask : public QWidget {
public:
    explicit CMask(QWidget* parent) : QWidget(parent), blur(new ZBackgroundBlurWidget(this)) { setGeometry(kAll); }

    QPointer<ZBackgroundBlurWidget> blur;
    int presses = 0;
    bool isDeletedByPress = false;

protected:
    void paintEvent(QPaintEvent* /*event*/) override { QPainter(this).fillRect(rect(), QColor(255, 0, 0, 128)); }
    void resizeEvent(QResizeEvent* /*event*/) override { blur->setGeometry(rect()); }
    void mousePressEvent(QMouseEvent* /*event*/) override {
        ++presses;
        if (isDeletedByPress) {
            delete this;
        }
    }
};

class BackgroundBlurTest : public KitTest {
protected:
    /// Makes a mask over the card and shows the window.
    CMask* Mask(QWidget* parent = nullptr) {
        auto* mask = new CMask(parent ? parent : card);
        Show();
        return mask;
    }

    QColor At(int x, int y) { return Look(&window).pixelColor(x, y); }

    /// Returns how often it blurred while the action took effect.
    template <class Action>
    quint64 Blurs(ZBackgroundBlurWidget* blur, Action action) {
        const quint64 before = blur->blurCount();
        action();
        time.Settle();
        return blur->blurCount() - before;
    }

    CHalves* card = new CHalves(&window);
};

TEST_F(BackgroundBlurTest, ShowsTheParentOfTheMaskBlurred) {
    CMask* mask = Mask();

    EXPECT_EQ(mask->blur->blurCount(), 1);
    EXPECT_EQ(At(5, 50), QColor(Qt::black));
    EXPECT_EQ(At(195, 50), QColor(Qt::white));
    const int middle = At(100, 50).red();
    EXPECT_NEAR(middle, 128, 12);
    // A Gaussian of sigma 12.3, 12 pixels off the edge.
    EXPECT_NEAR(At(112, 50).red(), 255 * 0.5 * (1 + std::erf(12.5 / 12.3 / std::sqrt(2.0))), 10);
}

TEST_F(BackgroundBlurTest, BackgroundOfAPlainWidgetIsShownWhenItIsFilled) {
    auto* plain = new QWidget(card);
    plain->setGeometry(kAll);
    plain->setPalette(QPalette(Qt::blue));
    plain->setAutoFillBackground(true);
    Mask(plain);

    EXPECT_EQ(At(100, 50), plain->palette().color(QPalette::Window));
    EXPECT_EQ(At(5, 50), At(195, 50));
}

TEST_F(BackgroundBlurTest, BackgroundOfAPlainWidgetIsShownWhenItIsStyled) {
    auto* plain = new QWidget(card);
    plain->setGeometry(kAll);
    plain->setStyleSheet(QStringLiteral("background: blue"));
    Mask(plain);

    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
    EXPECT_EQ(At(195, 50), QColor(Qt::blue));
}

TEST_F(BackgroundBlurTest, BackgroundOfThePlainWindowIsShownBehindPlainWidgets) {
    QWidget plainWindow;
    plainWindow.setPalette(QPalette(Qt::blue));
    plainWindow.setGeometry(kAll);
    auto* plain = new QWidget(&plainWindow);
    plain->setGeometry(kAll);
    new CMask(plain);
    // Another colour is in the buffer of sources.
    Mask();

    plainWindow.show();
    time.Settle();

    EXPECT_EQ(plainWindow.grab().toImage().pixelColor(100, 50), plainWindow.palette().color(QPalette::Window));
}

TEST_F(BackgroundBlurTest, PaintsNeitherTheMaskNorWhatIsOnIt) {
    CMask* mask = Mask();
    auto* text = new CHalves(mask->blur, Qt::red, Qt::red);
    text->setGeometry(0, 0, 60, 100);
    text->show();
    time.Settle();

    // No red spreads into the area next to the text.
    EXPECT_EQ(At(65, 50).red(), At(65, 50).green());
    EXPECT_EQ(At(30, 50), QColor(Qt::red));
    EXPECT_EQ(Blurs(mask->blur, [&] { text->update(); }), 0);
}

TEST_F(BackgroundBlurTest, ARepaintWithoutChangeDoesNotBlur) {
    CMask* mask = Mask();
    const QImage before = Look(&window);

    EXPECT_EQ(Blurs(mask->blur, [&] { mask->blur->update(); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { mask->update(QRect(3, 3, 20, 20)); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { card->update(); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { window.repaint(); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { window.grab(); }), 0);
    EXPECT_EQ(Look(&window), before);
}

TEST_F(BackgroundBlurTest, RepaintWithoutChangePaintsTheSourceOnce) {
    auto* counting = new CCounting(card);
    counting->setGeometry(kAll);
    auto* mask = new QWidget(card);
    mask->setGeometry(kAll);
    auto* blur = new ZBackgroundBlurWidget(mask);
    blur->setGeometry(kAll);
    Show();
    counting->paints = 0;

    EXPECT_EQ(Blurs(blur, [&] { blur->update(); }), 0);
    EXPECT_EQ(counting->paints, 1);

    // The change is seen, taken and shown.
    counting->color = Qt::blue;
    counting->paints = 0;
    EXPECT_EQ(Blurs(blur, [&] { counting->update(); }), 1);
    EXPECT_EQ(counting->paints, 2);
    EXPECT_EQ(At(100, 50), QColor(Qt::blue));
}

TEST_F(BackgroundBlurTest, RepaintWithoutChangePaintsAGivenSourceBelowTheMaskOnce) {
    auto* counting = new CCounting(card);
    counting->setGeometry(kAll);
    auto* mask = new QWidget(card);
    mask->setGeometry(kAll);
    auto* blur = new ZBackgroundBlurWidget(mask);
    blur->setGeometry(kAll);
    blur->setPainterBufferSource(WidgetPainterBufferSource(counting));
    Show();
    counting->paints = 0;

    EXPECT_EQ(Blurs(blur, [&] { blur->update(); }), 0);

    EXPECT_EQ(counting->paints, 1);
}

TEST_F(BackgroundBlurTest, FollowsAChangeBehindAMaskWithABackgroundOfTheSameColour) {
    card->SetColors(Qt::white, Qt::white);
    auto* mask = new CHalves(card, Qt::white, Qt::white);
    auto* blur = new ZBackgroundBlurWidget(mask);
    blur->setGeometry(kAll);
    Show();

    EXPECT_EQ(Blurs(blur, [&] { card->SetColors(Qt::black, Qt::black); }), 1);

    EXPECT_EQ(At(100, 50), QColor(Qt::black));
}

TEST_F(BackgroundBlurTest, FollowsAGivenSourceUnderAWidgetOfTheSameColour) {
    card->SetColors(Qt::white, Qt::white);
    auto* source = new CHalves(card, Qt::white, Qt::white);
    new CHalves(card, Qt::white, Qt::white);  // between the source and the mask
    auto* mask = new QWidget(card);
    mask->setGeometry(kAll);
    auto* blur = new ZBackgroundBlurWidget(mask);
    blur->setGeometry(kAll);
    blur->setPainterBufferSource(WidgetPainterBufferSource(source));
    Show();

    source->SetColors(Qt::black, Qt::black);
    time.Settle();
    blur->repaint();

    EXPECT_EQ(At(100, 50).red(), 0);
}

TEST_F(BackgroundBlurTest, FollowsAChangeBehindItWithOneBlur) {
    CMask* mask = Mask();

    EXPECT_EQ(Blurs(mask->blur, [&] { card->SetColors(Qt::blue, Qt::green); }), 1);

    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
    EXPECT_EQ(At(195, 50), QColor(Qt::green));
}

TEST_F(BackgroundBlurTest, PaintsAllOfItselfAgainAfterAChangeOfAPart) {
    auto* child = new CHalves(card, Qt::black, Qt::black);
    child->setGeometry(0, 0, 20, 100);
    CMask* mask = Mask();
    mask->raise();
    time.Settle();
    const auto* screen = static_cast<QImage*>(window.backingStore()->paintDevice());
    ASSERT_EQ(screen->pixelColor(30, 50).green(), 0);

    EXPECT_EQ(Blurs(mask->blur, [&] { child->SetColors(Qt::green, Qt::green); }), 1);

    EXPECT_GT(screen->pixelColor(25, 50).green(), 40);
}

TEST_F(BackgroundBlurTest, FollowsWidgetsThatAreAddedAndRemovedBehindIt) {
    CMask* mask = Mask();
    auto* outer = new QWidget(card);
    outer->setGeometry(0, 0, 60, 100);
    outer->stackUnder(mask);
    auto* inner = new CHalves(outer, Qt::green, Qt::green);

    EXPECT_GE(Blurs(mask->blur, [&] { outer->show(); }), 1);
    EXPECT_EQ(At(5, 50), QColor(Qt::green));
    EXPECT_EQ(Blurs(mask->blur, [&] { inner->SetColors(Qt::blue, Qt::blue); }), 1);
    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
    EXPECT_GE(Blurs(mask->blur, [&] { outer->move(140, 0); }), 1);
    EXPECT_EQ(At(195, 50), QColor(Qt::blue));
    EXPECT_GE(Blurs(mask->blur, [&] { delete outer; }), 1);
    EXPECT_EQ(At(195, 50), QColor(Qt::white));
}

TEST_F(BackgroundBlurTest, FollowsScrollingBehindIt) {
    QScrollArea area(card);
    area.setFrameShape(QFrame::NoFrame);
    area.setGeometry(kAll);
    auto* content = new CHalves(nullptr, Qt::black, Qt::white);
    content->resize(2000, 90);
    area.setWidget(content);
    CMask* mask = Mask();
    mask->raise();
    time.Settle();
    ASSERT_EQ(At(100, 30), QColor(Qt::black));

    EXPECT_EQ(Blurs(mask->blur, [&] { area.horizontalScrollBar()->setValue(950); }), 1);

    EXPECT_EQ(At(5, 30), QColor(Qt::black));
    EXPECT_EQ(At(100, 30), QColor(Qt::white));
}

TEST_F(BackgroundBlurTest, BlurTakesTheSourceOnceForAChangeOfAPart) {
    auto* child = new CCounting(card);
    child->setGeometry(0, 0, 20, 100);
    CMask* mask = Mask();
    mask->raise();
    time.Settle();
    child->paints = 0;

    EXPECT_EQ(Blurs(mask->blur, [&] { child->update(); }), 0);
    EXPECT_EQ(child->paints, 2);  // on the screen and for the comparison

    child->color = Qt::green;
    EXPECT_EQ(Blurs(mask->blur, [&] { child->update(); }), 1);
    EXPECT_EQ(child->paints, 5);  // once more for all of the blur on the screen
}

TEST_F(BackgroundBlurTest, BlurNoticesAChangeThatWaitsWhileItShowsAnother) {
    auto* child = new CCounting(card);
    child->setGeometry(0, 0, 20, 100);
    CMask* mask = Mask();
    mask->raise();
    time.Settle();
    child->color = Qt::green;
    child->repaint();

    EXPECT_EQ(Blurs(mask->blur, [&] { card->SetColors(Qt::black, Qt::blue); }), 1);

    EXPECT_EQ(At(195, 50), QColor(Qt::blue));
}

TEST_F(BackgroundBlurTest, FollowsItsPlaceOverAFixedSource) {
    auto* holderOfMask = new QWidget(card);
    holderOfMask->setGeometry(0, 0, 60, 100);
    CMask* mask = Mask(holderOfMask);
    mask->blur->setPainterBufferSource(WidgetPainterBufferSource(card));
    time.Settle();
    ASSERT_EQ(At(10, 50), QColor(Qt::black));

    EXPECT_EQ(Blurs(mask->blur, [&] { holderOfMask->move(140, 0); }), 1);

    EXPECT_EQ(At(190, 50), QColor(Qt::white));
}

TEST_F(BackgroundBlurTest, BlurIsTranslucentWhenItsWindowBecomesTranslucent) {
    card->setGeometry(0, 0, 100, 100);
    CMask* mask = Mask(&window);
    const auto alpha = [&] { return window.grab().toImage().pixelColor(195, 50).alpha(); };
    EXPECT_EQ(alpha(), 255);

    window.setAttribute(Qt::WA_TranslucentBackground);
    mask->blur->update();
    time.Settle();

    EXPECT_EQ(alpha(), 0);
}

TEST_F(BackgroundBlurTest, FollowsItsSize) {
    CMask* mask = Mask();
    mask->resize(90, 50);
    time.Settle();
    EXPECT_EQ(At(195, 50), QColor(Qt::white));
    EXPECT_EQ(At(85, 25), QColor(Qt::black));

    EXPECT_EQ(Blurs(mask->blur, [&] { mask->resize(200, 100); }), 1);

    EXPECT_NEAR(At(100, 90).red(), 128, 12);
}

TEST_F(BackgroundBlurTest, DoesNotBlurWhileItIsHiddenAndCatchesUpWhenItIsShown) {
    CMask* mask = Mask();
    mask->hide();

    EXPECT_EQ(Blurs(mask->blur, [&] { card->SetColors(Qt::blue, Qt::green); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { card->resize(190, 90); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { mask->blur->setBlurRadius(10); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { mask->grab(); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { mask->show(); }), 1);

    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
    EXPECT_EQ(Blurs(mask->blur, [&] { card->SetColors(Qt::red, Qt::green); }), 1);
}

TEST_F(BackgroundBlurTest, DoesNotBlurWhenItIsShownAgainUnchanged) {
    CMask* mask = Mask();

    EXPECT_EQ(Blurs(mask->blur,
                    [&] {
                        mask->hide();
                        time.Settle();
                        mask->show();
                    }),
              0);
}

TEST_F(BackgroundBlurTest, TakesTheBlendColourFromTheThemeOfThePaint) {
    CMask* mask = Mask();
    const quint64 blurs = mask->blur->blurCount();
    mask->blur->setBlendColor(zr_ui_res::TResource<QColor>(QStringLiteral("accent")));
    time.Settle();
    const QColor light = Color("accent");
    EXPECT_EQ(At(5, 50), light);

    SetTheme(zr_ui_theme::Manager::kThemeDarkBlue);
    time.Settle();

    ASSERT_NE(Color("accent"), light);
    EXPECT_EQ(At(5, 50), Color("accent"));
    EXPECT_EQ(mask->blur->blurCount(), blurs);
    mask->blur->setBlendColor(zr_ui_res::TResource<QColor>());
    EXPECT_EQ(At(5, 50), QColor(Qt::black));
}

TEST_F(BackgroundBlurTest, ShowsWhatIsBehindSharplyWithoutARadius) {
    CMask* mask = Mask(card);
    card->SetColors(Qt::blue, Qt::green);
    for (const double radius :
         {0.0, -1.0, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(Blurs(mask->blur, [&] { mask->blur->setBlurRadius(20); }), 1);
        EXPECT_EQ(Blurs(mask->blur, [&] { mask->blur->setBlurRadius(radius); }), 0) << radius;
        // The plate of the mask is over the sharp card.
        EXPECT_EQ(At(98, 50).green(), 0) << radius;
        EXPECT_EQ(At(101, 50).blue(), 0) << radius;
    }
    mask->blur->setBlurRadius(std::numeric_limits<double>::infinity());
    EXPECT_GT(At(98, 50).green(), 0);
}

TEST_F(BackgroundBlurTest, BlursMoreWithALargerRadius) {
    CMask* mask = Mask();
    mask->blur->setBlurRadius(5);
    const int narrow = At(110, 50).red();
    mask->blur->setBlurRadius(40);
    EXPECT_GT(narrow, At(110, 50).red() + 40);
}

TEST_F(BackgroundBlurTest, AGivenSourceTakesThePlaceOfTheParent) {
    auto* left = new CHalves(card, Qt::blue, Qt::blue);
    left->setGeometry(0, 0, 60, 100);
    auto* right = new CHalves(card, Qt::green, Qt::green);
    right->setGeometry(140, 0, 60, 100);
    CMask* mask = Mask();
    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
    EXPECT_EQ(At(195, 50), QColor(Qt::green));

    EXPECT_EQ(Blurs(mask->blur, [&] { mask->blur->setPainterBufferSource(WidgetPainterBufferSource(left)); }), 1);

    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
    EXPECT_EQ(At(195, 50), QColor(Qt::white));
    EXPECT_EQ(Blurs(mask->blur, [&] { left->SetColors(Qt::red, Qt::red); }), 1);
    EXPECT_EQ(At(5, 50), QColor(Qt::red));

    mask->blur->setPainterBufferSource(WidgetPainterBufferSource());
    EXPECT_EQ(At(195, 50), QColor(Qt::green));
}

TEST_F(BackgroundBlurTest, ADistantAncestorIsASourceWithAllThatIsInIt) {
    auto* behind = new CHalves(&window, Qt::blue, Qt::green);
    auto* clear = new QWidget(&window);
    clear->setGeometry(kAll);
    CMask* mask = Mask(clear);
    EXPECT_EQ(At(5, 50), QColor(Qt::white));

    mask->blur->setPainterBufferSource(WidgetPainterBufferSource(&window));

    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
    EXPECT_EQ(Blurs(mask->blur, [&] { behind->SetColors(Qt::red, Qt::green); }), 1);
    EXPECT_EQ(At(5, 50), QColor(Qt::red));
}

TEST_F(BackgroundBlurTest, AMaskAsItsOwnSourceCountsAsNone) {
    CMask* mask = Mask();
    for (QWidget* own : {static_cast<QWidget*>(mask), static_cast<QWidget*>(mask->blur)}) {
        mask->blur->setPainterBufferSource(WidgetPainterBufferSource(own));
        time.Settle();
        EXPECT_EQ(At(5, 50), QColor(Qt::black));
    }
}

TEST_F(BackgroundBlurTest, ShowsTheBlendColourAloneAfterItsSourceIsGone) {
    auto* source = new CHalves(card, Qt::blue, Qt::blue);
    CMask* mask = Mask();
    mask->blur->setPainterBufferSource(WidgetPainterBufferSource(source));
    mask->blur->setBlendColor(zr_ui_res::TResource<QColor>(QStringLiteral("accent")));
    time.Settle();

    EXPECT_EQ(Blurs(mask->blur, [&] { delete source; }), 0);

    EXPECT_EQ(At(5, 50), Color("accent"));
    EXPECT_EQ(Blurs(mask->blur, [&] { card->SetColors(Qt::red, Qt::green); }), 0);
}

TEST_F(BackgroundBlurTest, BlurEndsOnTheScreenWhenItsSourceInAnotherWindowIsGone) {
    auto other = std::make_unique<CHalves>(nullptr, Qt::blue, Qt::blue);
    other->show();
    CMask* mask = Mask();
    mask->blur->setPainterBufferSource(WidgetPainterBufferSource(other.get()));
    time.Settle();
    const auto* screen = static_cast<QImage*>(window.backingStore()->paintDevice());
    ASSERT_EQ(screen->pixelColor(100, 50), QColor(Qt::blue));

    other.reset();
    time.Settle();

    EXPECT_EQ(screen->pixelColor(100, 50).blue(), 127);  // the card under the plate of the mask
}

TEST_F(BackgroundBlurTest, FollowsItsMaskToAnotherCard) {
    auto* other = new CHalves(&window, Qt::blue, Qt::green);
    other->move(0, 150);
    CMask* mask = Mask();

    mask->setParent(other);
    mask->show();
    time.Settle();

    EXPECT_EQ(At(5, 200), QColor(Qt::blue));
    EXPECT_EQ(Blurs(mask->blur, [&] { other->SetColors(Qt::red, Qt::green); }), 1);
    EXPECT_EQ(Blurs(mask->blur, [&] { card->SetColors(Qt::red, Qt::green); }), 0);
}

TEST_F(BackgroundBlurTest, TwoMasksOverOneCardDoNotShowEachOther) {
    CMask* left = Mask();
    left->resize(120, 100);
    auto* right = new CMask(card);
    right->setGeometry(80, 0, 120, 100);
    right->show();
    time.Settle();

    EXPECT_EQ(Blurs(left->blur, [&] { right->blur->update(); }), 0);
    EXPECT_EQ(Blurs(left->blur, [&] { card->SetColors(Qt::blue, Qt::green); }), 1);
    EXPECT_EQ(Blurs(right->blur, [&] { left->update(); }), 0);
}

TEST_F(BackgroundBlurTest, PassesPressesOnToTheMask) {
    CMask* mask = Mask();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        Press(mask->blur, button);
        QTest::mouseRelease(window.windowHandle(), button, {}, QPoint(100, 50));
    }
    EXPECT_EQ(mask->presses, 2);
    EXPECT_EQ(window.presses, 0);
    Tab();
    EXPECT_FALSE(mask->blur->hasFocus());
}

TEST_F(BackgroundBlurTest, SurvivesAMaskThatIsDeletedByAPress) {
    const QPointer<CMask> mask = Mask();
    mask->isDeletedByPress = true;
    card->SetColors(Qt::blue, Qt::green);

    Click(mask->blur);
    time.Settle();

    EXPECT_FALSE(mask);
    EXPECT_EQ(At(5, 50), QColor(Qt::blue));
}

TEST_F(BackgroundBlurTest, BlursNothingWithoutSizeParentOrCard) {
    CMask* mask = Mask();
    mask->resize(0, 0);
    time.Settle();
    EXPECT_EQ(Blurs(mask->blur, [&] { card->SetColors(Qt::blue, Qt::green); }), 0);
    EXPECT_EQ(Blurs(mask->blur, [&] { mask->resize(1, 1); }), 1);

    ZBackgroundBlurWidget alone;
    alone.resize(50, 50);
    alone.show();
    time.Settle();
    EXPECT_EQ(alone.blurCount(), 0);

    CMask top(nullptr);
    top.show();
    time.Settle();
    EXPECT_EQ(top.blur->blurCount(), 0);
}

TEST_F(BackgroundBlurTest, LetsPaintEventsThrough) {
    CMask* mask = Mask();
    mask->blur->setBlurQuality(3);
    EXPECT_FALSE(mask->blur->testAttribute(Qt::WA_OpaquePaintEvent));
    EXPECT_FALSE(mask->blur->autoFillBackground());
    EXPECT_FALSE(mask->testAttribute(Qt::WA_OpaquePaintEvent));
}

class LargeBackgroundBlurTest : public BackgroundBlurTest {
protected:
    LargeBackgroundBlurTest() {
        window.resize(1800, 1000);
        card->resize(1800, 1000);
        mask = new CMask(card);
        mask->resize(1800, 1000);
    }

    bool WaitForBlurs(quint64 count) {
        return time.WaitUntil([&] { return mask->blur->blurCount() == count; });
    }

    CMask* mask;
};

TEST_F(LargeBackgroundBlurTest, CoversWhatIsBehindItUntilAnotherThreadHasBlurredIt) {
    window.show();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(mask->blur->blurCount(), 0);
    EXPECT_NE(At(5, 500), QColor(Qt::black));

    ASSERT_TRUE(WaitForBlurs(1));
    time.Settle();

    EXPECT_EQ(At(5, 500), QColor(Qt::black));
    EXPECT_NEAR(At(900, 500).red(), 128, 12);
    EXPECT_EQ(Blurs(mask->blur, [&] { mask->blur->update(); }), 0);
}

TEST_F(LargeBackgroundBlurTest, FollowsChangesAndTheBlendColour) {
    Show();
    ASSERT_TRUE(WaitForBlurs(1));
    card->SetColors(Qt::blue, Qt::green);
    ASSERT_TRUE(WaitForBlurs(2));
    time.Settle();
    EXPECT_EQ(At(5, 500), QColor(Qt::blue));
    EXPECT_EQ(At(1795, 990), QColor(Qt::green));

    mask->blur->setBlendColor(zr_ui_res::TResource<QColor>(QStringLiteral("accent")));
    EXPECT_TRUE(time.WaitUntil([&] { return At(5, 500) == Color("accent"); }));
    EXPECT_EQ(mask->blur->blurCount(), 2);

    mask->blur->setBlendColor(zr_ui_res::TResource<QColor>());
    mask->resize(1700, 990);
    ASSERT_TRUE(WaitForBlurs(3));
    time.Settle();
    EXPECT_EQ(At(1690, 980), QColor(Qt::green));
}

TEST_F(LargeBackgroundBlurTest, MayBeDeletedWhileAnotherThreadBlurs) {
    Show();
    ASSERT_TRUE(WaitForBlurs(1));
    card->SetColors(Qt::blue, Qt::green);
    for (int turn = 0; turn < 10; ++turn) {
        QCoreApplication::processEvents();
    }
    delete mask;
    time.Settle();
    EXPECT_EQ(At(5, 500), QColor(Qt::blue));
}

}  // namespace
