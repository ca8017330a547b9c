// Tests at a device pixel ratio of 2, where a drawing for ratio 1 is blurred.
#include <QPainter>

#include "KitTest.h"
#include "ui/Drawings.h"
#include "ui/ZAction.h"
#include "ui/ZBackgroundBlurWidget.h"
#include "ui/ZButton.h"
#include "ui/ZIconButton.h"
#include "ui/ZRWebImageWidget.h"
#include "ui/ZResource.h"
#include "ui/ZSvgWidget.h"

using namespace ::testing;

namespace {

// Set before the application, which reads it once.
const bool g_bTwoToOne = qputenv("QT_SCALE_FACTOR", "2");

// The platform places this window at the corner of the screen.
constexpr QPoint kAwayFromThePointer(100, 100);

class SharpTest : public KitTest {
protected:
    SharpTest() {
        EXPECT_TRUE(g_bTwoToOne);
        Show();
    }

    /// A drawing as it looks on the window, rendered for this ratio.
    static QImage Drawn(const char* name, const char* color, double ratio) {
        QImage image(32, 32, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.drawPixmap(QRect(0, 0, 32, 32),
                           host::drawings::Render(QString::fromLatin1(name), QSize(16, 16), ratio, Color(color)));
        return image;
    }
};

TEST_F(SharpTest, TheScreenIsOneOfTwoToOne) {
    EXPECT_EQ(window.devicePixelRatioF(), 2.0);
}

TEST_F(SharpTest, AnIconIsDrawnForTheScreen) {
    ZIconButton button(&window);
    button.move(kAwayFromThePointer);
    button.setIconButtonSize(QSize(16, 16));
    button.setSvgIconName(ZResource::icon_vip_16_normal);
    button.show();
    time.Settle();

    const QImage look = Look(&button);

    EXPECT_EQ(look.size(), QSize(32, 32));
    EXPECT_EQ(look, Drawn(ZResource::icon_vip_16_normal, "muted", 2.0));
    EXPECT_NE(look, Drawn(ZResource::icon_vip_16_normal, "muted", 1.0));
}

TEST_F(SharpTest, AnIconOnAButtonTooAndItsSizeCountsInTheButtonsOwnPixels) {
    ZButton button(&window);
    button.move(kAwayFromThePointer);
    button.setZrStyle(ZButton::kText);
    button.setLeftRightPadding(0);
    button.setIcon(ZResource::icon_vip_16_normal, QSize(16, 16));
    button.resize(16, 30);
    button.show();
    time.Settle();

    EXPECT_EQ(button.sizeHint().width(), 16);
    EXPECT_EQ(Look(&button).copy(0, 14, 32, 32), Drawn(ZResource::icon_vip_16_normal, "accent", 2.0));
}

TEST_F(SharpTest, IconOfAMenuEntryHasThePixelsOfTheScreen) {
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    ZAction action;
    action.setSvgIcon(ZResource::icon_vip_16_normal, ZIconColorStyle::normal);

    const QPixmap icon = action.icon().pixmap(window.windowHandle(), QSize(16, 16));

    EXPECT_EQ(icon.devicePixelRatio(), 2.0);
    EXPECT_EQ(icon.toImage().convertToFormat(QImage::Format_ARGB32),
              host::drawings::Render(ZResource::icon_vip_16_normal, QSize(16, 16), 2.0, Color("muted"))
                  .toImage()
                  .convertToFormat(QImage::Format_ARGB32));
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, false);
}

TEST_F(SharpTest, DrawingOfAWidgetHasThePixelsOfTheScreen) {
    ZSvgWidget widget(&window);
    widget.setSvgIconName(ZResource::icon_vip_16_normal);
    widget.setGeometry(100, 100, 16, 16);
    widget.show();
    time.Settle();

    EXPECT_EQ(Look(&widget), Drawn(ZResource::icon_vip_16_normal, "text", 2.0));
}

TEST_F(SharpTest, APictureIsAskedForInTheScreensPixelsAndPaintedOneToOne) {
    ZRWebImageWidget image(&window);
    image.setFixedSize(60, 20);
    image.show();
    time.Settle();
    image.SetUrl(QStringLiteral("https://pictures.test/a.png"), QString());
    ASSERT_EQ(pictures.Asked()[0].size, QSize(120, 40));

    auto picture = std::make_shared<Picture>();
    QImage lines(120, 40, QImage::Format_RGB32);
    for (int x = 0; x < 120; ++x) {
        QPainter(&lines).fillRect(x, 0, 1, 40, x % 2 == 0 ? Qt::black : Qt::white);
    }
    picture->frames.push_back({lines, 0});
    pictures.Succeed(1, picture);

    EXPECT_EQ(Look(&image), lines);
}

TEST_F(SharpTest, ABlurEndsAtTheLastPixelOfTheScreen) {
    QWidget card(&window);
    card.setGeometry(QRect(kAwayFromThePointer, QSize(51, 51)));
    QWidget mask(&card);
    mask.setGeometry(5, 5, 41, 41);
    ZBackgroundBlurWidget blur(&mask);
    blur.resize(41, 41);
    blur.setBlendColor(zr_ui_res::TResource<QColor>(QStringLiteral("accent")));
    card.show();
    time.Settle();

    const QImage look = Look(&card);

    EXPECT_EQ(blur.blurCount(), 1);
    EXPECT_EQ(Count(look, Color("accent")), 82 * 82);
    EXPECT_EQ(look.pixelColor(10, 10), Color("accent"));
    EXPECT_EQ(look.pixelColor(91, 91), Color("accent"));
}

}  // namespace
