#include "desktop/orbit/network_fetcher.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <algorithm>
#include <memory>
#include <string>

#include "desktop/loopback_certificate.h"
#include "desktop/loopback_server.h"
#include "state/version.h"

namespace glintara::desktop {
namespace {

using glintara::testing::LoopbackServer;
using glintara::testing::RawAnswer;
using glintara::testing::RedirectTo;
using glintara::testing::TextAnswer;

/// What came of an address.
struct Outcome {
    ReadStep step = ReadStep::Waiting;
    std::string text;
    int status = 0;
    std::string failure;
};

struct NetworkFetcherTest : ::testing::Test {
    Outcome Fetch(const std::string& address, std::size_t most = std::size_t{64} << 20) {
        const std::unique_ptr<Transfer> transfer = fetcher.Open(address);
        Outcome outcome;
        std::string part;
        while (outcome.text.size() <= most) {
            outcome.step = transfer->Read(part);
            if (outcome.step == ReadStep::Waiting) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
                continue;
            }
            if (outcome.step != ReadStep::Data) break;
            EXPECT_LE(part.size(), kReadBytes);
            outcome.text += part;
        }
        outcome.status = transfer->Status();
        if (outcome.step == ReadStep::Failed) outcome.failure = transfer->Failure();
        return outcome;
    }

    Outcome Ask(const QByteArray& path) { return Fetch(server.Host() + path.toStdString()); }

    void ExpectFailure(const Outcome& outcome, const std::string& words) {
        EXPECT_EQ(outcome.step, ReadStep::Failed);
        EXPECT_NE(outcome.failure.find(words), std::string::npos) << outcome.failure;
    }

    LoopbackServer server;
    NetworkFetcher fetcher;
};

TEST_F(NetworkFetcherTest, ReadsATextToItsEnd) {
    QByteArray text;
    for (int i = 0; i < 300000; ++i) text += QByteArray::number(i) + "\n";
    server.answers["/a.txt?x=1&y=2"] = TextAnswer(text);
    const Outcome outcome = Ask("/a.txt?x=1&y=2");
    EXPECT_EQ(outcome.step, ReadStep::End);
    EXPECT_EQ(outcome.status, 200);
    EXPECT_TRUE(outcome.text == text.toStdString());
}

TEST_F(NetworkFetcherTest, NamesProgramAndVersion) {
    server.answers["/"] = TextAnswer("x");
    Ask("/");
    EXPECT_TRUE(server.lastRequest.contains(("User-Agent: Glintara/" + std::string(kVersion) + "\r\n").c_str()))
        << server.lastRequest.toStdString();
}

TEST_F(NetworkFetcherTest, AnEmptyAnswerIsOne) {
    server.answers["/"] = TextAnswer("");
    const Outcome outcome = Ask("/");
    EXPECT_EQ(outcome.step, ReadStep::End);
    EXPECT_EQ(outcome.text, "");
    EXPECT_EQ(outcome.status, 200);
}

TEST_F(NetworkFetcherTest, AnErrorOfTheServerIsAnAnswerWithItsStatus) {
    for (const int status : {400, 401, 403, 404, 410, 429, 500, 503}) {
        server.answers["/"] = TextAnswer("words of the server", QByteArray::number(status) + " Error");
        const Outcome outcome = Ask("/");
        EXPECT_EQ(outcome.step, ReadStep::End) << status << outcome.failure;
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(outcome.text, "words of the server");
    }
}

TEST_F(NetworkFetcherTest, BytesComeAsTheyWereSent) {
    QByteArray all;
    for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
    server.answers["/"] = TextAnswer(all);
    EXPECT_EQ(Ask("/").text, all.toStdString());
}

TEST_F(NetworkFetcherTest, ChunksArePutTogether) {
    server.answers["/"] = {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n4\r\ndefg\r\n0\r\n\r\n"};
    const Outcome outcome = Ask("/");
    EXPECT_EQ(outcome.step, ReadStep::End) << outcome.failure;
    EXPECT_EQ(outcome.text, "abcdefg");
}

TEST_F(NetworkFetcherTest, RedirectionsAreFollowed) {
    server.answers["/a"] = RedirectTo("/b");
    server.answers["/b"] = RedirectTo((server.Host() + "/c").c_str());
    server.answers["/c"] = TextAnswer("here");
    const Outcome outcome = Ask("/a");
    EXPECT_EQ(outcome.step, ReadStep::End) << outcome.failure;
    EXPECT_EQ(outcome.text, "here");
    // A question whose connection closes under it is asked twice.
    QList<QByteArray> asked = server.asked;
    asked.erase(std::unique(asked.begin(), asked.end()), asked.end());
    EXPECT_EQ(asked, (QList<QByteArray>{"/a", "/b", "/c"}));
}

TEST_F(NetworkFetcherTest, ACircleOfRedirectionsEnds) {
    server.answers["/a"] = RedirectTo("/b");
    server.answers["/b"] = RedirectTo("/a");
    ExpectFailure(Ask("/a"), "round in a circle");
    // The first question and ten redirections, each asked twice at most.
    EXPECT_LE(server.asked.size(), 2 * 11);
}

TEST_F(NetworkFetcherTest, OtherSchemesAreNotFollowed) {
    for (const char* address : {"file:///etc/passwd", "ftp://127.0.0.1/a", "data:text/plain,x", "qrc:/manual"}) {
        server.answers["/a"] = RedirectTo(address);
        const Outcome outcome = Ask("/a");
        ExpectFailure(outcome, "neither http nor https");
        EXPECT_EQ(outcome.text, "") << address;
    }
}

TEST_F(NetworkFetcherTest, OtherSchemesAreNotAskedFor) {
    for (const char* address : {"file:///etc/passwd", "ftp://127.0.0.1/a", "http://", "", "a b", "http:///x"})
        ExpectFailure(Fetch(address), "no address of the web");
}

TEST_F(NetworkFetcherTest, AnAnswerThatBreaksOffIsNoAnswer) {
    RawAnswer broken = TextAnswer("only this");
    broken.bytes.replace("Content-Length: 9", "Content-Length: 5000");
    server.answers["/short"] = broken;
    ExpectFailure(Ask("/short"), "broke off");
    server.answers["/nothing"] = {""};
    ExpectFailure(Ask("/nothing"), "broke off");
    server.answers["/head"] = {"HTTP/1.1 200 OK\r\nContent-Le"};
    ExpectFailure(Ask("/head"), "broke off");
}

TEST_F(NetworkFetcherTest, AnErrorThatBreaksOffFailsToo) {
    RawAnswer broken = TextAnswer("only this", "404 Not Found");
    broken.bytes.replace("Content-Length: 9", "Content-Length: 5000");
    server.answers["/"] = broken;
    EXPECT_EQ(Ask("/").step, ReadStep::Failed);
}

TEST_F(NetworkFetcherTest, NoHttpIsNoAnswer) {
    server.answers["/"] = {"220 mail.example ready\r\n"};
    EXPECT_EQ(Ask("/").step, ReadStep::Failed);
}

TEST_F(NetworkFetcherTest, WhoIsNotThereIsTold) {
    const std::string address = server.Host() + "/";
    server.Close();
    ExpectFailure(Fetch(address), "127.0.0.1 refuses the connection");
    ExpectFailure(Fetch("http://no-such-host.invalid/"), "there is no host no-such-host.invalid");
}

// In this test and the next a time passes: they are those of the time-out itself.
TEST_F(NetworkFetcherTest, ASlowServerIsHeardOut) {
    NetworkFetcher hasty(1000);
    RawAnswer slow = TextAnswer("0123456789");
    slow.pause = 200;  // eight of them are more than the longest silence
    server.answers["/slow"] = slow;
    const auto transfer = hasty.Open(server.Host() + "/slow");
    std::string part;
    std::string text;
    ReadStep step;
    while ((step = transfer->Read(part)) == ReadStep::Waiting || step == ReadStep::Data) {
        if (step == ReadStep::Data) text += part;
        if (step == ReadStep::Waiting) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_EQ(step, ReadStep::End) << transfer->Failure();
    EXPECT_EQ(text, "0123456789");
}

TEST_F(NetworkFetcherTest, ASilentServerIsGivenUp) {
    NetworkFetcher hasty(150);
    const auto ask = [&](const QByteArray& path) {
        const auto transfer = hasty.Open(server.Host() + path.toStdString());
        std::string part;
        std::string text;
        ReadStep step;
        while ((step = transfer->Read(part)) == ReadStep::Waiting || step == ReadStep::Data) {
            if (step == ReadStep::Data) text += part;
            if (step == ReadStep::Waiting) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        EXPECT_EQ(step, ReadStep::Failed);
        EXPECT_NE(transfer->Failure().find("127.0.0.1 has sent nothing for"), std::string::npos) << transfer->Failure();
        return text;
    };
    server.answers["/silent"] = {.bytes = "", .closes = false};
    EXPECT_EQ(ask("/silent"), "");
    server.answers["/begins"] = {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nabc", .closes = false};
    EXPECT_EQ(ask("/begins"), "abc");
}

TEST_F(NetworkFetcherTest, AnEndlessAnswerIsReadAsItIsAskedFor) {
    server.answers["/"] = {
        .bytes = "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(65536, 'x'), .closes = false, .endless = true};
    const Outcome outcome = Fetch(server.Host() + "/", std::size_t{5} << 20);
    EXPECT_EQ(outcome.step, ReadStep::Data);
    EXPECT_GT(outcome.text.size(), std::size_t{5} << 20);
    // The end of the transfer is the end of the connection.
    while (server.open > 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST_F(NetworkFetcherTest, PackedAnswersAreUnpackedPieceByPiece) {
    QByteArray text;
    for (int i = 0; i < 100000; ++i) text += QByteArray::number(i * 7919) + "\n";
    // Qt puts the length before what is the "deflate" of the web.
    const QByteArray packed = qCompress(text).mid(4);
    server.answers["/"] = TextAnswer(packed, "200 OK", "Content-Encoding: deflate\r\n");
    const Outcome outcome = Ask("/");
    EXPECT_EQ(outcome.step, ReadStep::End) << outcome.failure;
    EXPECT_TRUE(outcome.text == text.toStdString()) << outcome.text.size();
}

// A hundred kilobytes that would become a hundred megabytes.
TEST_F(NetworkFetcherTest, APackedAnswerThatSwellsIsGivenUp) {
    const QByteArray packed = qCompress(QByteArray(100 << 20, ' ')).mid(4);
    ASSERT_LT(packed.size(), 200 << 10);
    server.answers["/"] = TextAnswer(packed, "200 OK", "Content-Encoding: deflate\r\n");
    const Outcome outcome = Fetch(server.Host() + "/", std::size_t{32} << 20);
    EXPECT_NE(outcome.step, ReadStep::End);
    EXPECT_LT(outcome.text.size(), (std::size_t{32} << 20) + 2 * kReadBytes);
}

TEST_F(NetworkFetcherTest, ATransferThatIsLetGoEndsAtOnce) {
    server.answers["/"] = {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nabc", .closes = false};
    auto transfer = fetcher.Open(server.Host() + "/");
    std::string part;
    while (transfer->Read(part) == ReadStep::Waiting) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(part, "abc");
    transfer.reset();
    while (server.open > 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // Before it was connected, and before anything was asked of it.
    fetcher.Open(server.Host() + "/").reset();
    server.answers["/next"] = TextAnswer("next");
    EXPECT_EQ(Ask("/next").text, "next");
}

/// A server of https, which nobody trusts but who is told to.
struct SecureFetcherTest : NetworkFetcherTest {
    static std::unique_ptr<QTcpServer> MakeServer() {
        QSslConfiguration configuration;
        configuration.setLocalCertificate(Certificate());
        configuration.setPrivateKey(QSslKey(glintara::testing::kLoopbackKey, QSsl::Ec));
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        auto server = std::make_unique<QSslServer>();
        server->setSslConfiguration(configuration);
        return server;
    }
    static QSslCertificate Certificate() { return QSslCertificate(glintara::testing::kLoopbackCertificate); }

    static void Trust() {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificate(Certificate());
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    void TearDown() override { QSslConfiguration::setDefaultConfiguration(before_); }

    Outcome AskSecurely(const char* path) { return Fetch(secure.Host("https") + path); }

    const QSslConfiguration before_ = QSslConfiguration::defaultConfiguration();
    LoopbackServer secure{MakeServer()};
};

TEST_F(SecureFetcherTest, WhoCannotShowWhoHeIsIsAskedNothing) {
    secure.answers["/a"] = TextAnswer("text");
    const Outcome outcome = AskSecurely("/a");
    ExpectFailure(outcome, "127.0.0.1 cannot be trusted: ");
    EXPECT_EQ(outcome.text, "");
    EXPECT_TRUE(secure.asked.isEmpty());
}

TEST_F(SecureFetcherTest, WhoIsTrustedIsRead) {
    Trust();
    secure.answers["/a"] = TextAnswer("text");
    const Outcome outcome = AskSecurely("/a");
    EXPECT_EQ(outcome.step, ReadStep::End) << outcome.failure;
    EXPECT_EQ(outcome.text, "text");
}

TEST_F(SecureFetcherTest, ARedirectionMayEncryptAndNeverUncover) {
    Trust();
    server.answers["/up"] = RedirectTo((secure.Host("https") + "/a").c_str());
    secure.answers["/a"] = TextAnswer("text");
    EXPECT_EQ(Ask("/up").text, "text");
    secure.answers["/down"] = RedirectTo((server.Host() + "/plain").c_str());
    server.answers["/plain"] = TextAnswer("text");
    ExpectFailure(AskSecurely("/down"), "not encrypted");
    EXPECT_FALSE(server.asked.contains("/plain"));
}

TEST_F(SecureFetcherTest, AServerThatSpeaksNoTlsIsNotTrusted) {
    EXPECT_EQ(Fetch(server.Host("https") + "/a").step, ReadStep::Failed);
}

TEST_F(NetworkFetcherTest, TheProxyOfTheSystemIsAsked) {
    qputenv("http_proxy", server.Host().c_str());
    server.answers["http://far-away.invalid/a"] = TextAnswer("by the proxy");
    const Outcome outcome = Fetch("http://far-away.invalid/a");
    qunsetenv("http_proxy");
    EXPECT_EQ(outcome.step, ReadStep::End) << outcome.failure;
    EXPECT_EQ(outcome.text, "by the proxy");
}

}  // namespace
}  // namespace glintara::desktop
