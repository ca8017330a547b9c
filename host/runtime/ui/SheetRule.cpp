#include "ui/SheetRule.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPaintEngine>
#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionButton>
#include <deque>

#include "ui/KitPaint.h"

namespace host::kit {
namespace {

using Rules = QHash<QString, SheetRule>;

constexpr size_t kKeptSheets = 8;

void AddProperties(SheetRule& rule, const QString& declarations, bool ofAnyState) {
    static const QRegularExpression property(QStringLiteral("(?:^|;)\\s*([a-z-]+)\\s*:"));
    auto found = property.globalMatch(declarations);
    while (found.hasNext()) {
        const QString name = found.next().captured(1);
        const bool font = name == QLatin1String("font");
        rule.size |= font || name == QLatin1String("font-size");
        rule.weight |= font || name == QLatin1String("font-weight");
        rule.color |= name == QLatin1String("color");
        // In a state without a rule the kit's plate would be absent.
        rule.background |= ofAnyState && name.startsWith(QLatin1String("background"));
        rule.border |= ofAnyState && name.startsWith(QLatin1String("border"));
    }
}

Rules Parse(QString sheet) {
    static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/"),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression block(QStringLiteral("([^{}]*)\\{([^}]*)\\}"));
    // The last part of a selector: a class, a name, attributes, states.
    static const QRegularExpression name(
        QStringLiteral("(?:^|[\\s>])[\\w*]*#([\\w-]+)((?:\\[[^\\]]*\\]|:[!\\w-]+)*)$"));
    Rules rules;
    auto blocks = block.globalMatch(sheet.remove(comment));
    while (blocks.hasNext()) {
        const auto found = blocks.next();
        const QStringList selectors = found.captured(1).split(QLatin1Char(','));
        for (const QString& selector : selectors) {
            const auto named = name.match(selector.trimmed());
            if (named.hasMatch()) {
                AddProperties(rules[named.captured(1)], found.captured(2),
                              !named.captured(2).contains(QLatin1Char(':')));
            }
        }
    }
    return rules;
}

const Rules& RulesIn(const QString& sheet) {
    static auto* kept = new std::deque<std::pair<QString, Rules>>;
    for (const auto& [text, rules] : *kept) {
        if (text == sheet) {
            return rules;
        }
    }
    if (kept->size() == kKeptSheets) {
        kept->pop_back();
    }
    kept->emplace_front(sheet, Parse(sheet));
    return kept->front().second;
}

void Add(SheetRule& rule, const QString& sheet, const QString& name) {
    if (!sheet.isEmpty()) {
        const SheetRule more = RulesIn(sheet).value(name);
        rule.size |= more.size;
        rule.weight |= more.weight;
        rule.color |= more.color;
        rule.background |= more.background;
        rule.border |= more.border;
    }
}

/// Records the colour of the last text. No public function returns a rule's colour for a state.
class CTextColor : public QPaintDevice {
public:
    QPaintEngine* paintEngine() const override { return &m_engine; }
    QColor Color() const { return m_engine.color; }

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
            case PdmDepth:
                return 32;
            case PdmNumColors:
                return INT_MAX;
            case PdmDevicePixelRatio:
            case PdmDevicePixelRatioScaled:
                return 1;
            default:
                return 100;
        }
    }

private:
    class CEngine : public QPaintEngine {
    public:
        CEngine() : QPaintEngine(AllFeatures) {}
        bool begin(QPaintDevice* /*device*/) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState& /*state*/) override {}
        void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*from*/) override {}
        void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
        void drawTextItem(const QPointF& /*at*/, const QTextItem& /*item*/) override {
            color = painter()->pen().color();
        }
        Type type() const override { return User; }

        QColor color;
    };

    mutable CEngine m_engine;
};

QStyleOptionButton OptionOf(const QAbstractButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    option.state |= button.isDown() ? QStyle::State_Sunken : QStyle::State_Raised;
    if (button.isCheckable()) {
        option.state |= button.isChecked() ? QStyle::State_On : QStyle::State_Off;
    }
    return option;
}

}  // namespace

SheetRule RuleOf(const QWidget& widget) {
    SheetRule rule;
    const QString name = widget.objectName();
    if (!name.isEmpty()) {
        Add(rule, qApp->styleSheet(), name);
        for (const QWidget* source = &widget; source; source = source->parentWidget()) {
            Add(rule, source->styleSheet(), name);
        }
    }
    return rule;
}

QFont FontOf(const QWidget& widget, int pixels, QFont::Weight weight) {
    const SheetRule rule = RuleOf(widget);
    QFont font = widget.font();
    const uint own = font.resolve();
    if (!rule.size || (own & QFont::SizeResolved) == 0) {
        font.setPixelSize(pixels);
    }
    if (!rule.weight || (own & QFont::WeightResolved) == 0) {
        font.setWeight(weight);
    }
    return font;
}

QColor TextColorOf(const QWidget& widget, const QColor& color) {
    if (RuleOf(widget).color) {
        return widget.palette().color(QPalette::WindowText);
    }
    return widget.isEnabled() ? color : Color("disabled");
}

QColor TextColorOf(const QAbstractButton& button, const QColor& color) {
    if (!RuleOf(button).color) {
        return color;
    }
    QStyleOptionButton option = OptionOf(button);
    option.rect = QRect(0, 0, 100, 100);
    option.text = QStringLiteral("x");
    option.palette.setColor(QPalette::ButtonText, color);
    CTextColor device;
    {
        QPainter painter(&device);
        button.style()->drawControl(QStyle::CE_PushButtonLabel, &option, &painter, &button);
    }
    return device.Color();
}

void PaintRule(QPainter& painter, const QAbstractButton& button) {
    const QStyleOptionButton option = OptionOf(button);
    button.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &button);
}

}  // namespace host::kit
