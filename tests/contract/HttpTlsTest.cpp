// Only a server that proves who it is hears anything of us.
#include <QSslConfiguration>

#include "RealHttpTest.h"
#include "support/SelfSigned.h"

using namespace ::testing;

namespace {

class HttpTlsTest : public RealHttpTest {
protected:
    HttpTlsTest() {
        environment.SetRelease(true);
        server.SpeakTls(own.certificate, own.key);
    }

    ~HttpTlsTest() override { QSslConfiguration::setDefaultConfiguration(before); }

    static void Trust(const QSslCertificate& certificate) {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates({certificate});
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    HttpReqInfo Secure() const {
        HttpReqInfo request = Post("/ad/search", "ask");
        request.m_strUrl.replace(0, sizeof("http") - 1, "https");
        return request;
    }

    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
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

}  // namespace
