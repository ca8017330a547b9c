#include "ui/ZMenu.h"

#include <QActionEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyleOptionMenuItem>
#include <map>

#include "ui/ZAction.h"

namespace {

constexpr QSize kPaintedRow(230, 40);
constexpr int kMaxFontSteps = 640;
constexpr double kStepPoints = 0.1;
constexpr double kNarrowPercent = 1;

}  // namespace

struct ZMenu::Private {
    ZMenu& menu;
    /// The entries that paint themselves, with the fonts that they had.
    std::map<const QAction*, QFont> painted;
    bool fitting = false;

    explicit Private(ZMenu& owner) : menu(owner) {}

    QStyleOptionMenuItem OptionFor(const QAction& action, const QRect& rect) const {
        QStyleOptionMenuItem option;
        menu.initStyleOption(&option, &action);
        const auto own = painted.find(&action);
        option.font = (own == painted.end() ? action.font() : own->second).resolve(menu.font());
        option.fontMetrics = QFontMetrics(option.font);
        option.rect = rect;
        return option;
    }

    bool Paint(QPainter& painter, const ZAction& action, const QRect& rect) const {
        const QStyleOptionMenuItem option = OptionFor(action, rect);
        painter.save();
        painter.setFont(option.font);
        const bool isPainted = action.paint(&painter, option, &menu);
        painter.restore();
        return isPainted;
    }

    void Fit(ZAction& action) {
        if (fitting) {
            return;
        }
        const QScopedValueRollback<bool> guard(fitting, true);
        QImage scratch(kPaintedRow, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&scratch);
        if (Paint(painter, action, scratch.rect())) {
            FitPainted(action, painted.emplace(&action, action.font()).first->second);
        } else if (const auto own = painted.find(&action); own != painted.end()) {
            action.setFont(own->second);
            painted.erase(own);
        }
        FitWidth(action);
    }

    void FitAll() {
        const QList<QAction*> actions = menu.actions();
        for (QAction* action : actions) {
            if (auto* own = qobject_cast<ZAction*>(action)) {
                Fit(*own);
            }
        }
    }

    // With a style sheet no style is asked for the size of a row, but the row grows with the font of its entry.
    void FitPainted(ZAction& action, QFont font) const {
        const int height = menu.actionGeometry(&action).height();
        if (height == kPaintedRow.height() || height == kPaintedRow.height() + 1) {
            return;
        }
        // The painted text does not widen the menu.
        font.setLetterSpacing(QFont::PercentageSpacing, kNarrowPercent);
        // Whole sizes skip some heights.
        int least = 1;
        int most = kMaxFontSteps;
        while (least < most) {
            const int middle = (least + most) / 2;
            font.setPointSizeF(middle * kStepPoints);
            action.setFont(font);
            if (menu.actionGeometry(&action).height() < kPaintedRow.height()) {
                least = middle + 1;
            } else {
                most = middle;
            }
        }
        font.setPointSizeF(least * kStepPoints);
        action.setFont(font);
    }

    // The least width of the menu includes frame and padding, which the style sheet sets.
    void FitWidth(const QAction& action) {
        menu.setMinimumWidth(0);
        if (painted.empty()) {
            return;
        }
        menu.setMinimumWidth(kPaintedRow.width());
        Refit();
        const int missing = kPaintedRow.width() - menu.actionGeometry(const_cast<QAction*>(&action)).width();
        if (missing > 0) {
            menu.setMinimumWidth(kPaintedRow.width() + missing);
            Refit();
        }
    }

    void Refit() {
        QEvent event(QEvent::StyleChange);
        menu.QMenu::changeEvent(&event);
    }

    // The usual row lies below, so the background is restored first.
    void PaintRow(const ZAction& action, const QRect& rect) const {
        QPainter painter(&menu);
        painter.setClipRect(rect);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect, menu.testAttribute(Qt::WA_TranslucentBackground)
                                   ? QBrush(Qt::transparent)
                                   : menu.palette().brush(menu.backgroundRole()));
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        QStyleOptionMenuItem panel;
        panel.initFrom(&menu);
        panel.state = QStyle::State_None;
        panel.checkType = QStyleOptionMenuItem::NotCheckable;
        panel.maxIconWidth = 0;
        panel.tabWidth = 0;
        menu.style()->drawPrimitive(QStyle::PE_PanelMenu, &panel, &painter, &menu);
        if (!Paint(painter, action, rect)) {
            const QStyleOptionMenuItem option = OptionFor(action, rect);
            menu.style()->drawControl(QStyle::CE_MenuItem, &option, &painter, &menu);
        }
    }
};

ZMenu::ZMenu(QWidget* parent) : QMenu(parent), d(std::make_unique<Private>(*this)) {
    connect(this, &QMenu::aboutToShow, this, [this] { d->FitAll(); });
}

ZMenu::~ZMenu() = default;

void ZMenu::paintEvent(QPaintEvent* event) {
    QMenu::paintEvent(event);
    const QList<QAction*> all = actions();
    for (const QAction* action : all) {
        const auto* own = qobject_cast<const ZAction*>(action);
        const QRect rect = actionGeometry(const_cast<QAction*>(action));
        if (own && d->painted.count(own) != 0 && event->rect().intersects(rect)) {
            d->PaintRow(*own, rect);
        }
    }
}

void ZMenu::actionEvent(QActionEvent* event) {
    QMenu::actionEvent(event);
    auto* action = qobject_cast<ZAction*>(event->action());
    if (event->type() == QEvent::ActionRemoved) {
        const auto own = d->painted.find(event->action());
        if (own != d->painted.end()) {
            const QFont font = own->second;
            d->painted.erase(own);
            if (action) {
                action->setFont(font);
            }
        }
    } else if (action) {
        d->Fit(*action);
    }
}

void ZMenu::changeEvent(QEvent* event) {
    QMenu::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) {
        d->FitAll();
    }
}
