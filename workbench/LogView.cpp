#include "workbench/LogView.h"

#include <QPlainTextEdit>
#include <QVariant>

namespace {

constexpr std::pair<ZRLogType, const char*> kSeverities[] = {
    {ZRLogType(0), "All severities"}, {kZRLogError, "Errors and up"}, {kZRLogFatal, "Fatal only"}};

constexpr std::pair<CLogFilter::EnSource, const char*> kSources[] = {{CLogFilter::EnSource::All, "All sources"},
                                                                     {CLogFilter::EnSource::Host, "Host"},
                                                                     {CLogFilter::EnSource::Module, "Module"}};

// Areas of the growth module, as in its log lines.
constexpr const char* kAreas[] = {"AIChat", "Ad", "Premium", "Vip"};

}  // namespace

CLogView::CLogView(QWidget* parent)
    : CEntryView(QStringLiteral("Log"), parent),
      m_model(this),
      m_filter(m_model),
      m_pSeverity(
          NewChoice("Severity", [this](const QVariant& item) { m_filter.SetMinimum(ZRLogType(item.toInt())); })),
      m_pSource(NewChoice("Source",
                          [this](const QVariant& item) { m_filter.SetSource(CLogFilter::EnSource(item.toInt())); })),
      m_pArea(NewChoice("Area", [this](const QVariant& item) { m_filter.SetArea(item.toString()); })),
      m_pDetail(New<QPlainTextEdit>("Detail")) {
    constexpr int kDetailLimit = 120;
    m_pDetail->setReadOnly(true);
    m_pDetail->setMaximumHeight(kDetailLimit);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    SetUp(m_model, m_filter, {80, 60, 92}, {m_pSeverity, m_pSource, m_pArea}, m_pDetail);
    for (const auto& [severity, name] : kSeverities) {
        m_pSeverity->addItem(QString::fromUtf8(name), int(severity));
    }
    for (const auto& [source, name] : kSources) {
        m_pSource->addItem(QString::fromUtf8(name), int(source));
    }
    m_pArea->addItem(QStringLiteral("All areas"), QString());
    for (const char* area : kAreas) {
        m_pArea->addItem(QString::fromLatin1(area), QString::fromLatin1(area));
    }
}

void CLogView::ShowChoices() {
    for (int index = 0; index < m_pSeverity->count(); ++index) {
        m_pSeverity->setItemText(index, QString::fromUtf8(kSeverities[index].second));
    }
    for (int index = 0; index < m_pSource->count(); ++index) {
        m_pSource->setItemText(index, QString::fromUtf8(kSources[index].second));
    }
    m_pArea->setItemText(0, QStringLiteral("All areas"));
}

void CLogView::ShowDetail(int row) {
    m_pDetail->setPlainText(row < 0 ? QString() : m_model.InFull(row));
}
