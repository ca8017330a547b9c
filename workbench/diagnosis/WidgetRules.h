#pragma once

#include <QString>
#include <initializer_list>
#include <vector>

#include "modules/ZRPremiumRecords.h"

/// The rules by which the module shows or hides a VIP widget of a right, in the module's order.
namespace widget_rules {

struct Rule {
    QString name;
    QString actual;
    QString expected;
    bool passes = false;
};

struct Widget {
    QString kind;   // as in the module's lines
    QString texts;  // the text set; empty if the widget has none
    std::vector<Rule> rules;

    /// The first rule that refuses; null if the widget is shown.
    const Rule* Refusing() const;
};

/// Icon, tag, and banner and masks with each text set.
std::vector<Widget> Of(const CPremiumUIAccessData& record, bool isNewSystem);

/// "3 · full": the number with its word, if it has one. The first word belongs to the number `first`.
QString Worded(int number, std::initializer_list<const char*> words, int first = 0);
QString Activation(int type);
QString Source(int source);

}  // namespace widget_rules
