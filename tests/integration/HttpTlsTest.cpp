// A request is sent only to a server with a verified certificate.
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include "RealHttpTest.h"
#include "support/SelfSigned.h"

using namespace ::testing;

namespace {

/// A relay between client and server that can add bytes.
class CMiddle : public QObject {
public:
    explicit CMiddle(quint16 server) {
        connect(&m_listener, &QTcpServer::newConnection, this, [this, server] {
            m_pClient = m_listener.nextPendingConnection();
            m_server.connectToHost(QHostAddress(QHostAddress::LocalHost), server);
            connect(m_pClient, &QTcpSocket::readyRead, this, [this] { m_server.write(m_pClient->readAll()); });
            connect(&m_server, &QTcpSocket::readyRead, this, [this] { m_pClient->write(m_server.readAll()); });
        });
        EXPECT_TRUE(m_listener.listen(QHostAddress::LocalHost));
    }

    quint16 Port() const { return m_listener.serverPort(); }
    void SayToClient(const QByteArray& bytes) { m_pClient->write(bytes); }

private:
    QTcpServer m_listener;
    QTcpSocket m_server;
    QTcpSocket* m_pClient = nullptr;
};

class HttpTlsTest : public RealHttpTest {
protected:
    HttpTlsTest() {
        environment.SetRelease(true);
        server.SpeakTls(own.certificate, own.key);
    }

    void Trust(const QSslCertificate& certificate) {
        HttpOptions options;
        options.caCertificates = certificate.toPem();
        http = std::make_unique<CHttpService>(poster, environment, options);
    }

    HttpReqInfo Secure() const {
        HttpReqInfo request = Post("/ad/search", "ask");
        request.m_strUrl.replace(0, sizeof("http") - 1, "https");
        return request;
    }

    const SelfSigned own = NewSelfSigned("127.0.0.1");
};

TEST_F(HttpTlsTest, AServerThatIsVouchedForIsSpokenTo) {
    Trust(own.certificate);

    const RawHttpRequest arrived = Exchange(Secure());
    server.Answer(arrived.connection, 200, QByteArray(1 << 20, 'x'));

    EXPECT_EQ(arrived.body, "ask");
    ExpectEnd(kHttpOk, 200, std::string(1 << 20, 'x'));
}

TEST_F(HttpTlsTest, AServerThatNobodyVouchesForHearsNothing) {
    Start(Secure());

    ExpectEnd(kHttpNoConnection, 0);
    EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(HttpTlsTest, AServerOfAnotherNameHearsNothing) {
    const SelfSigned other = NewSelfSigned("127.0.0.2");
    server.SpeakTls(other.certificate, other.key);
    Trust(other.certificate);

    Start(Secure());

    ExpectEnd(kHttpNoConnection, 0);
    EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(HttpTlsTest, AServerThatSpeaksPlainlyIsNoConnection) {
    CRawHttpServer plain;
    ASSERT_TRUE(plain.Listen());
    HttpReqInfo request = Secure();
    request.m_strUrl = "https://127.0.0.1:" + std::to_string(plain.Port()) + "/";
    request.m_nTimeoutSeconds = 2;
    plain.SetGreeting("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");

    Start(request);

    ExpectEnd(kHttpNoConnection, 0);
}

TEST_F(HttpTlsTest, AnAnswerThatIsCutFailsThereToo) {
    Trust(own.certificate);
    const int line = Exchange(Secure()).connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
    server.HangUp(line);

    ExpectEnd(kHttpCut, 200);
}

TEST_F(HttpTlsTest, ABodyWithoutALengthIsNoWholeOneWhereTheLineIsBroken) {
    Trust(own.certificate);
    CMiddle middle(server.Port());
    HttpReqInfo request = Secure();
    request.m_strUrl = "https://127.0.0.1:" + std::to_string(middle.Port()) + "/";
    double read = 0;
    http->Start(
        request, [this](unsigned long, const HttpRspInfo& response) { answer = response; }, &guard,
        kHttpWorkPoolDefault, nullptr, [&](double done, double) { read = done; });
    server.Write(Arrived().connection, "HTTP/1.1 200 OK\r\n\r\nhalf");
    ASSERT_TRUE(WaitUntil([&] { return read == 4; }));

    // A TLS record that cannot be decrypted.
    middle.SayToClient(QByteArray("\x17\x03\x03\x00\x20", 5) + QByteArray(32, 'x'));

    ExpectEnd(kHttpCut, 200);
}

}  // namespace
