#include "Vip/View/ZRVipViewTools.h"

#include "Vip/VipWidgetTest.h"

using namespace ::testing;

namespace {

class VipViewToolsTest : public VipWidgetTest {};

TEST_F(VipViewToolsTest, ImageKeepsItsProportionsWhenTheSizeHasOthers) {
    const QString name = ZResource::img_engine_m_56x16_normal;

    const QPixmap image = vip_view::ScaledImage(name, QSize(28, 28), &window);

    EXPECT_EQ(image.size(), QSize(28, 8));
    EXPECT_EQ(image.toImage(), Scaled(name, QSize(28, 28)));
}

TEST_F(VipViewToolsTest, ImageIsNullWhenTheNameIsUnknown) {
    const size_t before = log.Lines().size();
    EXPECT_TRUE(vip_view::ScaledImage(QStringLiteral("unknown"), QSize(8, 8), &window).isNull());
    EXPECT_EQ(log.Lines().size(), before + 1);
}

}  // namespace
