// Tooltips read rich text, which opens files. Only fixed texts and those of host::kit::TipText become tooltips.
#include <gmock/gmock.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace ::testing;

namespace {

const QString kSource = QStringLiteral(ZR_SOURCE_DIR);

/// Returns the uses of tooltips in `code` whose text is neither fixed nor from TipText.
std::vector<std::string> Foreign(const QString& code) {
    // Up to the end of the statement. A model returns its tooltip within the two next lines.
    static const QRegularExpression use(
        QStringLiteral("(setToolTip\\(|QToolTip::showText\\(|setData\\([^;]*Qt::ToolTipRole)[^;]*;|"
                       "(case|== )\\s*Qt::ToolTipRole[^\\n]*\\n[^\\n]*\\n?[^\\n]*"));
    static const QRegularExpression text(QStringLiteral(
        "\"(\\\\.|[^\"\\\\])*\"(_q)?|\\b(setToolTip|tr|QString|QStringLiteral|QToolTip|showText)\\b|\\b\\d+\\b"));
    std::vector<std::string> foreign;
    auto uses = use.globalMatch(code);
    while (uses.hasNext()) {
        const QString whole = uses.next().captured();
        // Conditions select between fixed texts.
        QString rest = whole.section(QLatin1Char('('), 1);
        rest.remove(text).remove(QRegularExpression(QStringLiteral("[A-Za-z_]+ *\\?")));
        const bool isFixed = whole.startsWith(QLatin1String("setToolTip")) &&
                             !rest.contains(QRegularExpression(QStringLiteral("[A-Za-z]")));
        if (!isFixed && !whole.contains(QLatin1String("TipText("))) {
            foreign.push_back(whole.simplified().toStdString());
        }
    }
    return foreign;
}

}  // namespace

TEST(TooltipTest, ATextThatIsNeitherFixedNorPlainIsFound) {
    EXPECT_THAT(Foreign(QStringLiteral("w->setToolTip(tr(\"Show\"));\nw->setToolTip(isOpen ? tr(\"A\") : QString());\n"
                                       "w->setToolTip(host::kit::TipText(name));\n")),
                IsEmpty());
    EXPECT_THAT(Foreign(QStringLiteral("w->setToolTip(name);\n")), SizeIs(1));
    EXPECT_THAT(Foreign(QStringLiteral("item->setToolTip(1, time);\n")), SizeIs(1));
    EXPECT_THAT(Foreign(QStringLiteral("if (role == Qt::ToolTipRole) {\n    return Cell();\n}\n")), SizeIs(1));
    EXPECT_THAT(Foreign(QStringLiteral("QToolTip::showText(place, index.data().toString());")), SizeIs(1));
}

TEST(TooltipTest, TheClientAndTheWorkbenchHaveNone) {
    for (const char* folder : {"client", "workbench"}) {
        QDirIterator files(kSource + QLatin1Char('/') + QLatin1String(folder),
                           {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            EXPECT_THAT(Foreign(QString::fromUtf8(file.readAll())), IsEmpty()) << file.fileName().toStdString();
        }
    }
}
