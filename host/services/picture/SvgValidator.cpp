#include "picture/SvgValidator.h"

#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

namespace {

// Limits for banner pictures, so that rendering is quick.
constexpr size_t kMaxBytes = 2 << 20;
constexpr int kMaxElements = 20'000;
constexpr int kMaxDepth = 100;

bool IsForbidden(const QString& element) {
    static const QSet<QString> names{
        QStringLiteral("script"),        QStringLiteral("image"),         QStringLiteral("feimage"),
        QStringLiteral("foreignobject"), QStringLiteral("iframe"),        QStringLiteral("video"),
        QStringLiteral("audio"),         QStringLiteral("handler"),       QStringLiteral("set"),
        QStringLiteral("animate"),       QStringLiteral("discard"),       QStringLiteral("animatetransform"),
        QStringLiteral("listener"),      QStringLiteral("animatemotion"), QStringLiteral("animatecolor")};
    return names.contains(element);
}

/// Whether each url(...) in the text refers to the document itself. A backslash could hide a reference.
bool StaysInside(const QString& style) {
    static const QRegularExpression outside(QStringLiteral("url\\s*\\(\\s*[\"']?\\s*(?!#|\\s|[\"'])"),
                                            QRegularExpression::CaseInsensitiveOption);
    return !style.contains(QLatin1Char('\\')) && !style.contains(QLatin1String("@import"), Qt::CaseInsensitive) &&
           !outside.match(style).hasMatch();
}

/// Reads a drawing from its first element to its last.
class CWalk {
public:
    explicit CWalk(const std::string& bytes) : m_reader(QByteArray::fromRawData(bytes.data(), int(bytes.size()))) {}

    /// Empty if the drawing is valid.
    std::string Reason() {
        while (!m_reader.atEnd() && m_reason.empty()) {
            Take(m_reader.readNext());
        }
        if (m_reason.empty() && (m_reader.hasError() || m_nElements == 0)) {
            m_reason = "it is cut or garbled";
        }
        if (m_reason.empty() && m_usingIds.intersects(m_used)) {
            m_reason = "what it repeats repeats something itself";
        }
        return m_reason;
    }

private:
    void Take(QXmlStreamReader::TokenType token) {
        switch (token) {
            case QXmlStreamReader::DTD:
            case QXmlStreamReader::EntityReference:
                m_reason = "it has entities";
                break;
            case QXmlStreamReader::ProcessingInstruction:
                m_reason = "it asks for a style sheet";
                break;
            case QXmlStreamReader::StartElement:
                Enter();
                break;
            case QXmlStreamReader::EndElement:
                m_ids.removeLast();
                m_elements.removeLast();
                break;
            case QXmlStreamReader::Characters:
                if (!m_elements.isEmpty() && m_elements.last() == QLatin1String("style") &&
                    !StaysInside(m_reader.text().toString())) {
                    m_reason = "its style refers to something outside";
                }
                break;
            case QXmlStreamReader::NoToken:
            case QXmlStreamReader::Invalid:
            case QXmlStreamReader::StartDocument:
            case QXmlStreamReader::EndDocument:
            case QXmlStreamReader::Comment:
                break;
        }
    }

    void Enter() {
        const QString element = m_reader.name().toString().toLower();
        const auto attributes = m_reader.attributes();
        m_elements.append(element);
        m_ids.append(attributes.value(QLatin1String("id")).toString());
        if (++m_nElements == 1 && element != QLatin1String("svg")) {
            m_reason = "it is no picture";
        } else if (m_nElements > kMaxElements || m_elements.size() > kMaxDepth) {
            m_reason = "it has too many parts";
        } else if (IsForbidden(element)) {
            m_reason = "it holds <" + element.toStdString() + ">";
        }
        for (const QXmlStreamAttribute& attribute : attributes) {
            LookAt(element, attribute.name().toString().toLower(), attribute.value().toString());
        }
        if (element == QLatin1String("use")) {
            for (const QString& id : qAsConst(m_ids)) {
                m_usingIds.insert(id);
            }
            m_usingIds.remove(QString());
        }
    }

    void LookAt(const QString& element, const QString& name, const QString& value) {
        if (name == QLatin1String("href")) {
            const QString target = value.trimmed();
            if (!target.startsWith(QLatin1Char('#'))) {
                m_reason = "it refers to something outside";
            }
            if (element == QLatin1String("use")) {
                m_used.insert(target.mid(1));
            }
        } else if (name == QLatin1String("base")) {
            m_reason = "it refers to something outside";
        } else if (name.startsWith(QLatin1String("on"))) {
            m_reason = "it holds code";
        } else if (!StaysInside(value)) {
            m_reason = "its style refers to something outside";
        }
    }

    QXmlStreamReader m_reader;
    std::string m_reason;
    int m_nElements = 0;
    QStringList m_elements;  // open elements in lower case, outermost first
    QStringList m_ids;       // the ids of m_elements
    QSet<QString> m_used;
    QSet<QString> m_usingIds;  // ids of elements that contain a <use>
};

}  // namespace

bool svg_validator::LooksLikeSvg(const std::string& bytes) {
    const size_t mark = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    const size_t begin = bytes.find_first_not_of(" \t\r\n", mark);
    return begin != std::string::npos && bytes[begin] == '<';
}

bool svg_validator::IsHarmless(const std::string& bytes, std::string& reason) {
    reason = bytes.size() > kMaxBytes ? "it is too large for a drawing" : CWalk(bytes).Reason();
    return reason.empty();
}
