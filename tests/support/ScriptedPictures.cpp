#include "support/ScriptedPictures.h"

#include <gtest/gtest.h>

#include <algorithm>

std::ostream& operator<<(std::ostream& stream, const AskedPicture& asked) {
    return stream << asked.load << ": " << asked.url << " " << asked.size.width() << "x" << asked.size.height()
                  << (asked.moving ? " moving" : "");
}

std::shared_ptr<const Picture> CScriptedPictures::Plain(const QSize& size, const QColor& color) {
    auto picture = std::make_shared<Picture>();
    QImage image(size.expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    picture->frames.push_back({image, 0});
    return picture;
}

const std::vector<AskedPicture>& CScriptedPictures::Asked() {
    std::fill(m_lookedAt.begin(), m_lookedAt.end(), true);
    return m_asked;
}

int CScriptedPictures::LastLoad() {
    const int load = m_asked.empty() ? 0 : m_asked.back().load;
    LookAt(load);
    return load;
}

void CScriptedPictures::Succeed(int load, const QColor& color) {
    const auto found = m_outstanding.find(load);
    Complete(load, Plain(found == m_outstanding.end() ? QSize() : found->second.size, color));
}

void CScriptedPictures::Succeed(int load, std::shared_ptr<const Picture> picture) {
    Complete(load, picture);
}

void CScriptedPictures::Fail(int load) {
    Complete(load, nullptr);
}

void CScriptedPictures::SucceedUrl(const std::string& url) {
    Succeed(WaitingFor(url));
}

void CScriptedPictures::FailUrl(const std::string& url) {
    Fail(WaitingFor(url));
}

int CScriptedPictures::WaitingFor(const std::string& url) const {
    int load = 0;
    for (const auto& [number, outstanding] : m_outstanding) {
        if (outstanding.guard && outstanding.url == url) {
            load = number;
        }
    }
    return load;
}

int CScriptedPictures::OutstandingCount() const {
    return int(std::count_if(m_outstanding.begin(), m_outstanding.end(),
                             [](const auto& entry) { return bool(entry.second.guard); }));
}

void CScriptedPictures::Forget() {
    m_asked.clear();
    m_lookedAt.clear();
}

void CScriptedPictures::CheckAllLookedAt() {
    for (size_t i = 0; i < m_asked.size(); ++i) {
        if (!m_lookedAt[i]) {
            ADD_FAILURE() << "An unexpected picture was asked for: " << m_asked[i];
        }
    }
    std::fill(m_lookedAt.begin(), m_lookedAt.end(), true);
}

void CScriptedPictures::Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) {
    const int load = ++m_nLastLoad;
    m_asked.push_back({load, url.toStdString(), size, moving, guard});
    m_lookedAt.push_back(false);
    m_outstanding[load] = {url.toStdString(), size, guard, std::move(done)};
    if (m_bAtOnce) {
        Succeed(load);
    }
}

void CScriptedPictures::Complete(int load, const std::shared_ptr<const Picture>& picture) {
    LookAt(load);
    if (load <= 0 || load > m_nLastLoad) {
        ADD_FAILURE() << "No picture was asked for by the number " << load;
        return;
    }
    const auto found = m_outstanding.find(load);
    if (found == m_outstanding.end()) {
        return;
    }
    const Outstanding outstanding = std::move(found->second);
    m_outstanding.erase(found);
    if (outstanding.guard) {
        outstanding.done(picture);
    }
}

void CScriptedPictures::LookAt(int load) {
    for (size_t i = 0; i < m_asked.size(); ++i) {
        if (m_asked[i].load == load) {
            m_lookedAt[i] = true;
        }
    }
}
