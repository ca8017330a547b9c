#include "ui/ZSvgWidget.h"

#include <QPainter>

#include "KitTest.h"
#include "ui/Drawings.h"
#include "ui/ZCustomColorSvg.h"
#include "ui/ZResource.h"
#include "ui/zr_ui_font.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

class ZSvgWidgetTest : public KitTest {
protected:
    ZSvgWidget widget{&window};
};

TEST_F(ZSvgWidgetTest, HintIsTheSizeOfTheDrawing) {
    EXPECT_EQ(widget.sizeHint(), QSize(0, 0));
    widget.setSvgIconName(ZResource::icon_engine_36x16_normal);
    EXPECT_EQ(widget.sizeHint(), QSize(36, 16));
    EXPECT_EQ(widget.svgIconName(), QString(ZResource::icon_engine_36x16_normal));
}

TEST_F(ZSvgWidgetTest, DrawingIsScaledIntoTheWidgetInTheColourOfTextsAndFollowsTheTheme) {
    widget.setSvgIconName(ZResource::icon_blackvip_16_normal);
    widget.resize(64, 32);
    Show();
    EXPECT_EQ(Look(&widget).pixelColor(32, 16), Color("text"));
    EXPECT_EQ(Count(Look(&widget).copy(0, 0, 16, 32), Qt::white), 16 * 32);

    SetTheme(Manager::kThemeDarkBlue);
    EXPECT_EQ(Look(&widget).pixelColor(32, 16), Color("text"));
}

TEST_F(ZSvgWidgetTest, LeavesPressesToTheParent) {
    widget.setSvgIconName(ZResource::icon_blackvip_16_normal);
    widget.resize(64, 32);
    Show();
    Press(&widget);
    EXPECT_EQ(window.presses, 1);
}

TEST_F(ZSvgWidgetTest, UnknownNameShowsNothingAndIsLogged) {
    widget.resize(20, 20);
    widget.setSvgIconName(QStringLiteral("nothing"));
    Show();
    EXPECT_EQ(widget.svgIconName(), QString());
    EXPECT_EQ(Count(Look(&widget), Qt::white), 400);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("ZSvgWidget: there is no drawing \"nothing\"")));
}

class ZCustomColorSvgTest : public KitTest {
protected:
    QImage Rendered(ZWidgetState::type state, const QRectF& rect, double ratio = 1) {
        QImage image(64, 64, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::white);
        QPainter painter(&image);
        svg.renderer()->render(state, &painter, rect);
        painter.end();
        image.setDevicePixelRatio(1);
        return image;
    }

    ZCustomColorSvg svg;
};

TEST_F(ZCustomColorSvgTest, PaintsInTheColourOfTheCallerInsideTheRectangle) {
    svg.setFile(ZResource::icon_blackvip_16_normal);
    EXPECT_GT(Count(Rendered(ZWidgetState::normal, QRectF(8, 8, 16, 16)), Color("text")), 20);

    svg.setColor(QColor(200, 100, 0));
    const QImage image = Rendered(ZWidgetState::normal, QRectF(8, 8, 16, 16));

    EXPECT_GT(Count(image, QColor(200, 100, 0)), 20);
    EXPECT_EQ(Count(image.copy(0, 0, 64, 8), Qt::white), 64 * 8);
    EXPECT_EQ(Count(image.copy(24, 0, 40, 64), Qt::white), 40 * 64);
}

TEST_F(ZCustomColorSvgTest, IsSharpOnTheDeviceAndKeepsTheRatioOfTheDrawing) {
    svg.setFile(ZResource::icon_engine_16);
    svg.setColor(Qt::black);
    QImage expected(64, 64, QImage::Format_RGB32);
    expected.fill(Qt::white);
    {
        QPainter painter(&expected);
        QPixmap sharp = host::drawings::Render(ZResource::icon_engine_16, QSize(16, 16), 2.0, Qt::black);
        sharp.setDevicePixelRatio(1);
        painter.drawPixmap(16, 16, sharp);
    }
    EXPECT_EQ(Rendered(ZWidgetState::normal, QRectF(8, 8, 16, 16), 2.0), expected);
}

TEST_F(ZCustomColorSvgTest, IsPalerInADisabledWidget) {
    svg.setFile(ZResource::icon_blackvip_16_normal);
    svg.setColor(Qt::black);
    const QImage image = Rendered(ZWidgetState::disabled, QRectF(0, 0, 16, 16));
    EXPECT_EQ(Count(image, Qt::black), 0);
    EXPECT_LT(image.pixelColor(8, 8).lightness(), 200);
}

TEST_F(ZCustomColorSvgTest, PaintsNothingWithoutPainterRectangleOrDrawing) {
    svg.renderer()->render(ZWidgetState::normal, nullptr, QRectF(0, 0, 16, 16));
    EXPECT_EQ(Count(Rendered(ZWidgetState::normal, QRectF(0, 0, 16, 16)), Qt::white), 64 * 64);
    svg.setFile(ZResource::icon_engine_16);
    svg.renderer()->render(ZWidgetState::normal, nullptr, QRectF(0, 0, 16, 16));
    EXPECT_EQ(Count(Rendered(ZWidgetState::normal, QRectF()), Qt::white), 64 * 64);

    svg.setFile(QStringLiteral("nothing"));

    EXPECT_EQ(Count(Rendered(ZWidgetState::normal, QRectF(0, 0, 16, 16)), Qt::white), 64 * 64);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("ZCustomColorSvg: there is no drawing \"nothing\"")));
}

TEST(ZrUiFontTest, TokenChangesTheSizeAlone) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setItalic(true);
    font.setWeight(63);
    font.setPixelSize(50);
    const int sizes[] = {11, 12, 13, 14, 16, 20};
    for (int token = 0; token < 6; ++token) {
        QFont expected = font;
        expected.setPixelSize(sizes[token]);
        EXPECT_EQ(zr_ui_font::WithToken(font, token), expected) << token;
    }
    EXPECT_EQ(zr_ui_font::WithToken(font, -1), font);
    EXPECT_EQ(zr_ui_font::WithToken(font, 6), font);
}

}  // namespace
