// The pages in every language and theme, at two sizes and two scales: no text is cut without a tooltip, no widget is
// outside its parent, and no id is in place of a text.
#include <QAbstractScrollArea>
#include <QHeaderView>
#include <QLabel>
#include <QRegularExpression>
#include <QTableWidget>

#include "VipClientFixture.h"
#include "ui/ZButton.h"
#include "ui/ZMultilineText.h"
#include "ui/ZText.h"

using namespace ::testing;

namespace {

constexpr int kLanguages[] = {0, 1, 2, 5, 7};
constexpr int kThemes[] = {1, 2, 3};
constexpr int kRow = 16;
constexpr QSize kSizes[] = {{1280, 720}, {1920, 1080}};
// Text ids of the modules have six digits; a user's id has five.
const QRegularExpression kId(QStringLiteral("^\\W*[0-9]{6}\\W*$"));

struct Text {
    QString shown;
    bool isCut = false;
};

bool IsWiderThan(const QFontMetrics& metrics, const QString& text, int width) {
    return metrics.horizontalAdvance(text) > width;
}

/// Returns the text of a widget that shows one; empty for any other.
Text TextOf(const QWidget& widget) {
    if (const auto* line = qobject_cast<const ZText*>(&widget)) {
        return {line->text(), line->isDotted()};
    }
    if (const auto* button = qobject_cast<const ZButton*>(&widget)) {
        return {button->text(), IsWiderThan(button->fontMetrics(), button->text(), button->contentsRect().width())};
    }
    if (const auto* block = qobject_cast<const ZMultilineText*>(&widget)) {
        const QFontMetrics metrics(block->font());
        const int height =
            metrics.boundingRect(QRect(0, 0, block->width(), 10'000), Qt::TextWrapAnywhere, block->text()).height();
        return {block->text(), height / metrics.lineSpacing() > block->height() / kRow};
    }
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        const bool isCut = label->wordWrap()
                               ? label->heightForWidth(label->width()) > label->height()
                               : IsWiderThan(label->fontMetrics(), label->text(), label->contentsRect().width());
        return {label->text(), !label->text().isEmpty() && isCut};
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return {button->text(), !button->text().isEmpty() && button->sizeHint().width() > button->width()};
    }
    return {};
}

std::array<int, 4> RectOf(const QRect& rect) {
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

class PageLayoutTest : public VipClientTest, public WithParamInterface<quint64> {
protected:
    ~PageLayoutTest() override { End(); }

    void SetLanguage(int language) {
        if (client->LanguageId() == language) {
            return;
        }
        bool isRefreshed = false;
        QObject context;
        core::__CMessageDispatch("[Test]").Bind(
            80050u, [&isRefreshed](unsigned int, auto, auto) { isRefreshed = true; }, &context);
        client->SetLanguage(language);
        ASSERT_TRUE(WaitInRealTime([&] { return isRefreshed; }));
    }

    static std::string NameOf(const QWidget& widget) {
        return std::string(widget.metaObject()->className()) + " \"" + widget.objectName().toStdString() + '"';
    }

    static bool IsScrolled(const QWidget& widget) {
        const QWidget* area = widget.parentWidget() ? widget.parentWidget()->parentWidget() : nullptr;
        return qobject_cast<const QAbstractScrollArea*>(area) != nullptr;
    }

    void CheckTable(const QTableWidget& table) {
        const QHeaderView& header = *table.horizontalHeader();
        for (int column = 0; column < header.count(); ++column) {
            if (!header.isSectionHidden(column)) {
                EXPECT_LE(header.sectionSizeHint(column), header.sectionSize(column))
                    << NameOf(table) << ' ' << table.horizontalHeaderItem(column)->text().toStdString();
            }
        }
    }

    void Check(const QWidget& root) {
        for (const auto* widget : root.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->window() != window) {
                continue;
            }
            const Text text = TextOf(*widget);
            EXPECT_FALSE(text.isCut && widget->toolTip().isEmpty())
                << NameOf(*widget) << " cuts " << text.shown.toStdString();
            EXPECT_FALSE(kId.match(text.shown).hasMatch()) << NameOf(*widget) << ' ' << text.shown.toStdString();
            if (!IsScrolled(*widget)) {
                EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()))
                    << NameOf(*widget) << " is outside " << NameOf(*widget->parentWidget()) << ": "
                    << PrintToString(RectOf(widget->geometry())) << " in "
                    << PrintToString(RectOf(widget->parentWidget()->rect()));
            }
            if (const auto* table = qobject_cast<const QTableWidget*>(widget)) {
                CheckTable(*table);
            }
        }
    }

    void CheckPages() {
        for (const TabPage& row : kTabPages) {
            SCOPED_TRACE(row.page.name);
            Choose(row.page.name);
            QWidget* page = Child<QWidget>((std::string("Page_") + row.page.name).c_str());
            ASSERT_TRUE(WaitInRealTime([&] { return page->isVisible(); }));
            SettleLayout();
            window->grab();
            Check(*page);
        }
        Check(*Child<QWidget>("TitleBar"));
        Check(*Child<QWidget>("Navigation"));
        Check(*Child<QWidget>("StatusLine"));
    }
};

TEST_P(PageLayoutTest, NoTextIsLostAndEachWidgetIsWithinItsParent) {
    LogIn(GetParam());

    for (const int language : kLanguages) {
        SetLanguage(language);
        for (const int theme : kThemes) {
            client->SetTheme(theme);
            window->resize(kSizes[size_t(language + theme) % std::size(kSizes)]);
            SCOPED_TRACE("language " + std::to_string(language) + ", theme " + std::to_string(theme) + ", width " +
                         std::to_string(window->width()));
            CheckPages();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Users, PageLayoutTest, Values(20001, 20003, 20009, 20012),
                         [](const auto& user) { return "user" + std::to_string(user.param); });

}  // namespace
