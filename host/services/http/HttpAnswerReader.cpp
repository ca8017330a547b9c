#include "http/HttpAnswerReader.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

// Status line, headers and trailers together.
constexpr size_t kMostHeadBytes = 256 << 10;
constexpr size_t kLongestLine = 32 << 10;

// Lines about chunks are paid for by what the chunks bring: a server may send each byte as a chunk of its own, but
// not many words about none.
constexpr size_t kLongestChunkLine = 4 << 10;
constexpr size_t kChunkLineBytesPerByte = 16;
constexpr char kBeginning[] = "HTTP/1.";
constexpr size_t kStatusDigits = 3;

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return text;
}

std::string Trimmed(const std::string& text) {
    const size_t begin = text.find_first_not_of(" \t");
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

/// Digits alone, all of them; false also for a number that is beyond counting.
bool ReadNumber(const std::string& text, int base, uint64_t& number) {
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number, base);
    return read.ec == std::errc() && read.ptr == end && !text.empty();
}

bool IsDigits(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string CHttpAnswerReader::Header(const std::string& name) const {
    const auto found = m_headers.find(name);
    return found == m_headers.end() ? std::string() : found->second;
}

CHttpAnswerReader::EnState CHttpAnswerReader::Take(const char* bytes, size_t count) {
    const char* at = bytes;
    const char* const end = bytes + count;
    while (m_enState == EnState::kReading && at != end) {
        switch (m_enPart) {
            case EnPart::kHead:
                if (TakeLine(at, end)) {
                    TakeHeadLine();
                    m_line.clear();
                }
                break;
            case EnPart::kChunkSize:
            case EnPart::kChunkEnd:
            case EnPart::kTrailer:
                if (TakeLine(at, end)) {
                    TakeChunkLine();
                    m_line.clear();
                }
                break;
            case EnPart::kCounted:
            case EnPart::kToTheEnd:
            case EnPart::kChunk:
                TakeBody(at, end);
                break;
        }
    }
    if (m_enState == EnState::kWhole && at != end) {
        Fail(EnState::kBad);
    }
    return m_enState;
}

CHttpAnswerReader::EnState CHttpAnswerReader::End(bool orderly) {
    if (m_enState == EnState::kReading) {
        m_enState = orderly && m_enPart == EnPart::kToTheEnd ? EnState::kWhole : EnState::kCut;
    }
    return m_enState;
}

bool CHttpAnswerReader::TakeLine(const char*& at, const char* end) {
    const auto* ending = static_cast<const char*>(std::memchr(at, '\n', size_t(end - at)));
    const char* const stop = ending ? ending + 1 : end;
    m_line.append(at, stop);
    const bool counted = CountLineBytes(size_t(stop - at));
    at = stop;
    // What does not begin as an answer is none, however long it goes on.
    const size_t begun = std::min(m_line.size(), sizeof(kBeginning) - 1);
    if (m_nStatus == 0 && m_line.compare(0, begun, kBeginning, begun) != 0) {
        Fail(EnState::kBad);
        return false;
    }
    if (!counted) {
        Fail(EnState::kTooLarge);
        return false;
    }
    if (!ending) {
        return false;
    }
    m_line.pop_back();
    if (!m_line.empty() && m_line.back() == '\r') {
        m_line.pop_back();
    }
    return true;
}

/// False once the lines are too long for what they say.
bool CHttpAnswerReader::CountLineBytes(size_t count) {
    if (m_enPart == EnPart::kHead || m_enPart == EnPart::kTrailer) {
        m_nHeadBytes += count;
        return m_line.size() <= kLongestLine && m_nHeadBytes <= kMostHeadBytes;
    }
    m_nChunkLineBytes += count;
    return m_line.size() <= kLongestChunkLine &&
           m_nChunkLineBytes <= kMostHeadBytes + kChunkLineBytesPerByte * m_body.size();
}

void CHttpAnswerReader::TakeHeadLine() {
    if (m_nStatus == 0) {
        TakeStatusLine();
    } else if (m_line.empty()) {
        BeginBody();
    } else {
        TakeHeader();
    }
}

void CHttpAnswerReader::TakeStatusLine() {
    constexpr size_t at = sizeof("HTTP/1.x ") - 1;
    uint64_t status = 0;
    const bool good = m_line.rfind("HTTP/1.", 0) == 0 && m_line.size() >= at + kStatusDigits && m_line[at - 1] == ' ' &&
                      IsDigits(m_line.substr(at, kStatusDigits)) &&
                      ReadNumber(m_line.substr(at, kStatusDigits), 10, status) &&
                      (m_line.size() == at + kStatusDigits || m_line[at + kStatusDigits] == ' ');
    if (!good || status < 100 || status == 101) {
        Fail(EnState::kBad);
        return;
    }
    m_nStatus = int(status);
}

void CHttpAnswerReader::TakeHeader() {
    const size_t colon = m_line.find(':');
    if (colon == std::string::npos || colon == 0 || m_line.find_first_of(" \t") < colon) {
        Fail(EnState::kBad);
        return;
    }
    const std::string name = Lower(m_line.substr(0, colon));
    const std::string value = Trimmed(m_line.substr(colon + 1));
    const auto [entry, isNew] = m_headers.emplace(name, value);
    // Two lengths, or two ways to tell one, would be two answers.
    if (!isNew && entry->second != value && (name == "content-length" || name == "transfer-encoding")) {
        Fail(EnState::kBad);
    }
}

void CHttpAnswerReader::BeginBody() {
    if (m_nStatus < 200) {
        // Not the answer yet.
        m_nStatus = 0;
        m_headers.clear();
        return;
    }
    const bool counted = m_headers.count("content-length") == 1;
    const bool coded = m_headers.count("transfer-encoding") == 1;
    if (m_nStatus == 204 || m_nStatus == 304) {
        m_enState = EnState::kWhole;
    } else if (coded) {
        m_enPart = EnPart::kChunkSize;
        if (counted || Lower(Header("transfer-encoding")) != "chunked") {
            Fail(EnState::kBad);
        }
    } else if (counted) {
        m_enPart = EnPart::kCounted;
        const std::string length = Header("content-length");
        if (!IsDigits(length)) {
            Fail(EnState::kBad);
        } else if (!ReadNumber(length, 10, m_nLength) || m_nLength > m_nMost) {
            Fail(EnState::kTooLarge);
        } else if (m_nLength == 0) {
            m_enState = EnState::kWhole;
        } else {
            m_nLeft = m_nLength;
            m_body.reserve(size_t(m_nLength));
        }
    } else {
        m_enPart = EnPart::kToTheEnd;
    }
}

void CHttpAnswerReader::TakeBody(const char*& at, const char* end) {
    uint64_t count = uint64_t(end - at);
    if (m_enPart != EnPart::kToTheEnd) {
        count = std::min(count, m_nLeft);
        m_nLeft -= count;
    }
    if (m_body.size() + count > m_nMost) {
        Fail(EnState::kTooLarge);
        return;
    }
    m_body.append(at, size_t(count));
    at += count;
    if (m_enPart == EnPart::kCounted && m_nLeft == 0) {
        m_enState = EnState::kWhole;
    } else if (m_enPart == EnPart::kChunk && m_nLeft == 0) {
        m_enPart = EnPart::kChunkEnd;
    }
}

void CHttpAnswerReader::TakeChunkLine() {
    if (m_enPart == EnPart::kTrailer) {
        m_enState = m_line.empty() ? EnState::kWhole : EnState::kReading;
        return;
    }
    if (m_enPart == EnPart::kChunkEnd) {
        m_enPart = EnPart::kChunkSize;
        if (!m_line.empty()) {
            Fail(EnState::kBad);
        }
        return;
    }
    // Behind a semicolon stands what concerns nobody.
    if (!ReadNumber(Trimmed(m_line.substr(0, m_line.find(';'))), 16, m_nLeft)) {
        Fail(EnState::kBad);
    } else if (m_nLeft > m_nMost) {
        Fail(EnState::kTooLarge);
    } else {
        m_enPart = m_nLeft == 0 ? EnPart::kTrailer : EnPart::kChunk;
    }
}
