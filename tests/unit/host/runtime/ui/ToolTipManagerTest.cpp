#include "KitTest.h"
#include "ui/IZToolTipManager.h"
#include "ui/ZLabel.h"

using namespace ::testing;

namespace {

class ToolTipManagerTest : public KitTest {
protected:
    void Register(const QString& text) { manager->RegisterToolTips(&widget, {text}); }

    IZToolTipManager* const manager = IZToolTipManager::instance();
    QWidget widget;
};

TEST_F(ToolTipManagerTest, ManagerIsAlwaysTheSame) {
    ASSERT_TRUE(manager);
    EXPECT_EQ(IZToolTipManager::instance(), manager);
}

TEST_F(ToolTipManagerTest, LaterTextReplacesTheEarlierUntilItIsRemoved) {
    Register(QStringLiteral("first"));
    Register(QStringLiteral("second"));
    EXPECT_EQ(widget.toolTip(), QStringLiteral("second"));

    manager->UnRegisterToolTips(&widget);
    EXPECT_EQ(widget.toolTip(), QString());
    manager->UnRegisterToolTips(&widget);
    EXPECT_EQ(widget.toolTip(), QString());
}

TEST_F(ToolTipManagerTest, EmptyTextRemovesTheTooltip) {
    Register(QStringLiteral("first"));
    Register(QString());
    EXPECT_EQ(widget.toolTip(), QString());
}

TEST_F(ToolTipManagerTest, TextIsPlainWhenItLooksLikeMarkup) {
    Register(QStringLiteral("<img src=\"file:///x\">\n&amp;"));
    EXPECT_EQ(widget.toolTip(), QStringLiteral("<p>&lt;img src=&quot;file:///x&quot;&gt;<br>&amp;amp;</p>"));
}

TEST_F(ToolTipManagerTest, NothingHappensWithoutAWidget) {
    manager->RegisterToolTips(nullptr, {QStringLiteral("x")});
    manager->UnRegisterToolTips(nullptr);
}

TEST_F(ToolTipManagerTest, LabelThatIsCutOffersItsWholeTextAgainWhenTheTooltipIsRemoved) {
    ZLabel label(QStringLiteral("Connection lost"), &window);
    Show();
    label.resize(30, 16);
    ASSERT_EQ(label.toolTip(), QStringLiteral("Connection lost"));
    manager->RegisterToolTips(&label, {QStringLiteral("Check the cable")});
    label.resize(31, 16);
    EXPECT_EQ(label.toolTip(), QStringLiteral("Check the cable"));

    manager->UnRegisterToolTips(&label);
    label.setText(QStringLiteral("Connection is slow"));

    EXPECT_EQ(label.toolTip(), QStringLiteral("Connection is slow"));
}

}  // namespace
