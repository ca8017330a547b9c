#pragma once

#include <cstdint>
#include <map>
#include <string>

/// Reads the one answer of a connection from bytes as they come, and believes none of them. An answer with more
/// behind it is none: one of the two lengths is wrong. Nothing is thrown.
class CHttpAnswerReader {
public:
    enum class EnState {
        kReading,
        kWhole,
        kTooLarge,  ///< a body, or what announces it, beyond the limit; a head or chunk sizes without measure
        kBad,       ///< no answer in this protocol
        kCut,       ///< the connection ended first
    };

    explicit CHttpAnswerReader(uint64_t mostBodyBytes) : m_nMost(mostBodyBytes) {}

    /// Beyond kReading only a whole answer can still turn bad, by more bytes.
    EnState Take(const char* bytes, size_t count);

    /// The connection has ended; `orderly` where the server closed it. Only then a body without a length is whole.
    EnState End(bool orderly);

    /// 0 until the head is read.
    int Status() const { return m_nStatus; }
    /// The value of a header, the first of its name, which is given in lower case; empty if there is none.
    std::string Header(const std::string& name) const;

    std::string& Body() { return m_body; }
    /// -1 where the head does not say.
    int64_t BodyLength() const { return m_enPart == EnPart::kCounted ? int64_t(m_nLength) : -1; }

private:
    enum class EnPart { kHead, kCounted, kToTheEnd, kChunkSize, kChunk, kChunkEnd, kTrailer };

    /// Whether a whole line stands in m_line; takes bytes for it.
    bool TakeLine(const char*& at, const char* end);
    bool CountLineBytes(size_t count);
    void TakeHeadLine();
    void TakeStatusLine();
    void TakeHeader();
    void TakeChunkLine();
    void BeginBody();
    void TakeBody(const char*& at, const char* end);
    void Fail(EnState state) { m_enState = state; }

    const uint64_t m_nMost;
    EnState m_enState = EnState::kReading;
    EnPart m_enPart = EnPart::kHead;
    std::string m_line;
    size_t m_nHeadBytes = 0;  // of head and trailers so far
    size_t m_nChunkLineBytes = 0;
    int m_nStatus = 0;
    std::map<std::string, std::string> m_headers;
    std::string m_body;
    uint64_t m_nLength = 0;
    uint64_t m_nLeft = 0;  // of the body, or of the chunk
};
