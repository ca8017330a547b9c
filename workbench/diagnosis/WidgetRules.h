#pragma once

#include <QString>
#include <vector>

#include "modules/ZRPremiumRecords.h"

/// The rules by which the module shows or hides a VIP widget of a right, in the module's order.
namespace widget_rules {

struct Rule {
    QString name;  // as in the log table
    QString actual;
    QString expected;
    bool passes = false;
};

struct Widget {
    QString kind;   // as in the log table
    QString texts;  // the text set; empty if the widget has none
    std::vector<Rule> rules;

    /// The first rule that refuses; null if the widget is shown.
    const Rule* Refusing() const;
};

/// Icon, tag, and banner and masks with each text set.
std::vector<Widget> Of(const CPremiumUIAccessData& record, bool isNewSystem);

}  // namespace widget_rules
