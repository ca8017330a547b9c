#include "NullHost.h"

#include <fmt/format.h>

#include <cstdlib>

#include "framework/Ports.h"

namespace {

constexpr char kTaken[] = R"({"code":0})";

}  // namespace

CNullHost::CNullHost(std::string search) : m_http(m_poster, std::move(search)) {
    host::Ports ports;
    ports.log = &m_log;
    ports.poster = &m_poster;
    ports.store = &m_store;
    ports.state = &m_state;
    ports.timeAndRandom = &m_timeAndRandom;
    ports.http = &m_http;
    ports.reports = &m_reports;
    ports.pictures = &m_pictures;
    host::Install(ports);
}

CNullHost::~CNullHost() {
    host::Uninstall();
}

void CNullHost::CLog::AssertionFailed(const AssertionRecord& record) {
    fmt::print(stderr, "Assertion failed: {} {}:{}\n", record.expression, record.file, record.line);
    std::abort();
}

unsigned long CNullHost::CHttp::Start(const HttpReqInfo& request, core::network::http::Callback callback,
                                      QObject* guard, HttpWorkPool /*pool*/, core::network::http::Progress /*upload*/,
                                      core::network::http::Progress /*download*/) {
    const unsigned long task = ++last;
    const bool isSearch = request.m_strUrl.find("/ad/search") != std::string::npos;
    poster.Post(guard, std::chrono::milliseconds(0), [this, task, isSearch, callback = std::move(callback)] {
        HttpRspInfo response;
        response.m_nResult = kHttpOk;
        response.m_nHttpStatusCode = 200;
        response.m_strBody = isSearch ? answer : kTaken;
        callback(task, response);
    });
    return task;
}

CNullHost::CPictures::CPictures(IPoster& to) : poster(to) {
    QImage image(360, 120, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    picture->frames.push_back({image, 0});
}

void CNullHost::CPictures::Load(const QString& /*url*/, const QSize& /*size*/, bool /*moving*/, QObject* guard,
                                Done done) {
    poster.Post(guard, std::chrono::milliseconds(0), [this, done = std::move(done)] { done(picture); });
}
