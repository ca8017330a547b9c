// Tests at a device pixel ratio of 2, where an image for ratio 1 is blurred.
#include <QLabel>

#include "Vip/View/ZRVipBannerWidget.h"
#include "Vip/View/ZRVipIconWidget.h"
#include "Vip/View/ZRVipMaskWidget.h"
#include "Vip/View/ZRVipTagWidget.h"
#include "Vip/VipWidgetTest.h"

using namespace ::testing;

namespace {

// Set before the application, which reads it once.
const bool g_bTwoToOne = qputenv("QT_SCALE_FACTOR", "2");

class VipWidgetsSharpTest : public VipWidgetTest {
protected:
    VipWidgetsSharpTest() { EXPECT_TRUE(g_bTwoToOne); }

    static void ExpectSharp(const QWidget& widget, const QString& name, const QSize& size) {
        EXPECT_EQ(widget.devicePixelRatioF(), 2.0);
        const QLabel* label = widget.findChild<QLabel*>();
        ASSERT_TRUE(label);
        const QPixmap pixmap = label->pixmap(Qt::ReturnByValue);
        EXPECT_EQ(pixmap.size(), size * 2);
        EXPECT_EQ(pixmap.devicePixelRatioF(), 2.0);
        EXPECT_EQ(label->minimumSize().isEmpty() ? widget.minimumSize() : label->minimumSize(), size);
        QImage expected = zr_ui_res::TResource<QPixmap>(name).value(2.0).toImage();
        EXPECT_EQ(pixmap.toImage(), expected);
        QImage blurred = zr_ui_res::TResource<QPixmap>(name).value(1.0).toImage().scaled(size * 2, Qt::KeepAspectRatio,
                                                                                         Qt::SmoothTransformation);
        blurred.setDevicePixelRatio(2.0);
        EXPECT_NE(pixmap.toImage(), blurred);
    }
};

TEST_F(VipWidgetsSharpTest, IconHasThePixelsOfTheScreen) {
    ExpectSharp(CZRVipIconWidget(kMarketRight, &window), ZResource::img_vip_16_normal, QSize(16, 16));
}

TEST_F(VipWidgetsSharpTest, TagHasThePixelsOfTheScreen) {
    ExpectSharp(CZRVipTagWidget(kMarketRight, ZRVipTagName, QString(), &window), ZResource::img_viptaben_76x16_normal,
                QSize(76, 16));
    UserIs(NewMember());
    ExpectSharp(CZRVipTagWidget(kMarketRight, ZRVipTagName, QString(), &window), ZResource::img_engine_m_56x16_normal,
                QSize(56, 16));
}

TEST_F(VipWidgetsSharpTest, BannersMarkHasThePixelsOfTheScreen) {
    ExpectSharp(CZRVipBannerWidget(kMarketRight, ZRVipUIDataMain, QString(), &window), ZResource::img_vip_16_normal,
                QSize(16, 16));
    UserIs(NewMember());
    ExpectSharp(CZRVipBannerWidget(kMarketRight, ZRVipUIDataMain, QString(), &window),
                ZResource::img_engine_nbg_54x16_normal, QSize(54, 16));
}

TEST_F(VipWidgetsSharpTest, ExclusiveMasksMarkHasThePixelsOfTheScreen) {
    ExpectSharp(CZRVipExclusiveMaskWidget(kMarketRight, ZRVipUIDataMain, QString(), &window, {}, 1, 1, false),
                ZResource::img_vip_16_normal, QSize(16, 16));
    UserIs(NewMember());
    ExpectSharp(CZRVipExclusiveMaskWidget(kMarketRight, ZRVipUIDataMain, QString(), &window, {}, 1, 1, false),
                ZResource::img_engine_m_56x16_normal, QSize(56, 16));
}

}  // namespace
