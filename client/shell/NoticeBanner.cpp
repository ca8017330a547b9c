#include "NoticeBanner.h"

#include <QHBoxLayout>
#include <QLabel>

#include "Icons.h"
#include "Theme.h"
#include "Translation.h"

CNoticeBanner::CNoticeBanner(QWidget* parent) : QFrame(parent), m_pText(new QLabel(this)) {
    setObjectName(QStringLiteral("ModuleBanner"));
    m_pText->setObjectName(QStringLiteral("ModuleBannerText"));
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setWordWrap(true);
    auto* icon = new QLabel(this);
    theme::OnThemeChange(icon, [icon] { icon->setPixmap(icons::Pixmap("warning", theme::kWarning, 18)); });
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(14, 9, 14, 9);
    layout->setSpacing(10);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(m_pText, 1);
    translation::OnLanguageChange(this, [this] { ShowText(); });
    hide();
}

void CNoticeBanner::ShowModuleFailures(const QStringList& failures) {
    m_failures = failures;
    ShowText();
    setVisible(!failures.isEmpty());
}

void CNoticeBanner::ShowText() const {
    QStringList lines;
    for (const QString& failure : m_failures) {
        lines << tr("The client goes on without a module. %1").arg(failure);
    }
    m_pText->setText(lines.join(QLatin1Char('\n')));
}
