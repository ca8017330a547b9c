// Format for web pages and the calls of their bridge.
#include "framework/JsonText.h"
#include "workbench/EventFormatParts.h"
#include "workbench/JsonFields.h"

namespace {

class CWebFormat : public IEventFormat {
public:
    QString Name() const override { return QStringLiteral("Web"); }
    QString Nothing() const override {
        return QStringLiteral("No page was loaded yet. Open the AI chat from a page to see one.");
    }
    std::vector<Column> Columns() const override {
        return {{"What", "what"}, {"Name", "name"}, {"Call", "call"}, {"Value", nullptr}};
    }
    std::vector<Filter> Filters() const override {
        return {{"Kind", "All kinds", {std::begin(kKinds), std::end(kKinds)}}};
    }

    bool Takes(const Event& event) const override { return As<WebTrace>(event) != nullptr; }

    EventRow Row(const Event& event) const override {
        constexpr int kPreview = 80;
        const WebTrace& web = *As<WebTrace>(event);
        EventRow row = NewRow(event);
        row.choices << QString::fromLatin1(kKinds[size_t(web.kind)]);
        row.cells = QStringList{row.choices[0], web.name, web.call == 0 ? QString() : QString::number(web.call),
                                QString::fromStdString(web.text.substr(0, 4 * kPreview)).left(kPreview).simplified()};
        row.tone = web.isBad ? EnTone::kBad : EnTone::kNormal;
        row.detail = [web] {
            return std::vector<FieldNode>{Node("Name", web.name),
                                          BodyField(QStringLiteral("Value"), web.text, web.text.size())};
        };
        return row;
    }

private:
    // By WebTrace::EnKind.
    static constexpr const char* kKinds[] = {"Page", "Call", "Answer", "Refused", "Event"};
};

}  // namespace

std::unique_ptr<IEventFormat> NewWebFormat() {
    return std::make_unique<CWebFormat>();
}
