#include "workbench/LogView.h"

#include <QPlainTextEdit>
#include <QVariant>

namespace {

constexpr std::pair<ZRLogType, texts::EnText> kSeverities[] = {
    {ZRLogType(0), texts::kSeverityAll}, {kZRLogError, texts::kSeverityError}, {kZRLogFatal, texts::kSeverityFatal}};

constexpr std::pair<CLogFilter::EnSource, texts::EnText> kSources[] = {
    {CLogFilter::EnSource::All, texts::kSourceAll},
    {CLogFilter::EnSource::Host, texts::kSourceHost},
    {CLogFilter::EnSource::Module, texts::kSourceModule}};

// The parts of the growth module, as their lines name them.
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
        m_pSeverity->addItem(texts::Tr(name), int(severity));
    }
    for (const auto& [source, name] : kSources) {
        m_pSource->addItem(texts::Tr(name), int(source));
    }
    m_pArea->addItem(texts::Tr(texts::kAreaAll), QString());
    for (const char* area : kAreas) {
        m_pArea->addItem(QString::fromLatin1(area), QString::fromLatin1(area));
    }
}

void CLogView::ShowChoices() {
    for (int index = 0; index < m_pSeverity->count(); ++index) {
        m_pSeverity->setItemText(index, texts::Tr(kSeverities[index].second));
    }
    for (int index = 0; index < m_pSource->count(); ++index) {
        m_pSource->setItemText(index, texts::Tr(kSources[index].second));
    }
    m_pArea->setItemText(0, texts::Tr(texts::kAreaAll));
}

void CLogView::ShowDetail(int row) {
    m_pDetail->setPlainText(row < 0 ? QString() : m_model.InFull(row));
}
