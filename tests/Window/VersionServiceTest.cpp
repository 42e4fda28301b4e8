#include "Window/Update/VersionService.h"

#include "support/Files.h"
#include "support/LoopbackServer.h"

#include <QElapsedTimer>
#include <QXmlStreamReader>

#include <thread>

namespace
{
using Request = LoopbackServer::Request;
using namespace std::chrono_literals;

const QString Path = "/Service.asmx?op=GetVersion3";

QByteArray reply(const QByteArray& result)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
           "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\"><soap:Body>"
           "<GetVersion3Response xmlns=\"http://zell.example/\">" +
           result + "</GetVersion3Response></soap:Body></soap:Envelope>";
}

QByteArray version(const QByteArray& text)
{
    return reply("<GetVersion3Result>" + text + "</GetVersion3Result>");
}

VersionService serviceAt(const QUrl& endpoint, std::chrono::milliseconds limit = 10s,
                         std::stop_token stop = {})
{
    return {{endpoint, "http://zell.example/", QUrl("http://zell.example/get"), {}},
            WebCall(std::move(stop), limit)};
}

QString ask(const VersionService& service)
{
    return service.getVersion("Product", "2.5.1", "Computer", 0, "192.0.2.7");
}

/// What the program makes of an answer.
QString askAnswered(const QByteArray& whole)
{
    const LoopbackServer server([whole](const Request&) { return whole; });
    return ask(serviceAt(server.address(Path)));
}
} // namespace

TEST(VersionServiceTest, SendsItsParametersInTheirOrder)
{
    const LoopbackServer server(
        [](const Request&) { return LoopbackServer::answer(version("3")); });
    const VersionService service = serviceAt(server.address(Path));
    EXPECT_EQ(service.getVersion("Zell iPod/iPhone to Mac Transfer", "2.5.1", "Ada & <Bob>\x01", 0,
                                 "192.0.2.7"),
              "3");
    ASSERT_EQ(server.requests().size(), 1U);
    const Request& request = server.requests().front();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/Service.asmx?op=GetVersion3");
    EXPECT_EQ(request.headers.value("content-type"), "text/xml; charset=utf-8");
    EXPECT_EQ(request.headers.value("soapaction"), "\"http://zell.example/GetVersion3\"");

    QStringList told;
    QXmlStreamReader xml(request.body);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.attributes().isEmpty()) {
            told.append(xml.namespaceUri().toString() + u' ' + xml.name().toString());
            continue;
        }
        const QString type =
            xml.attributes().value("http://www.w3.org/2001/XMLSchema-instance", "type").toString();
        const QString name = xml.name().toString();
        told.append(name + u' ' + type + u' ' + xml.readElementText());
    }
    EXPECT_FALSE(xml.hasError());
    EXPECT_EQ(told,
              QStringList({"http://schemas.xmlsoap.org/soap/envelope/ Envelope",
                           "http://schemas.xmlsoap.org/soap/envelope/ Body",
                           "http://zell.example/ GetVersion3",
                           "strSoftwareName xsd:string Zell iPod/iPhone to Mac Transfer",
                           "strUsingVersion xsd:string 2.5.1", "strPCName xsd:string Ada & <Bob>",
                           "iVersionType xsd:int 0", "strIPAddress xsd:string 192.0.2.7"}));
}

TEST(VersionServiceTest, GivesTheVersionOfTheAnswer)
{
    EXPECT_EQ(askAnswered(LoopbackServer::answer(version("2.6.0"))), "2.6.0");
}

TEST(VersionServiceTest, AnEmptyOrMissingResultIsNoVersion)
{
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(version(""))).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(reply("<GetVersion3Result/>"))).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(reply(""))).isNull());
    EXPECT_TRUE(
        askAnswered(LoopbackServer::answer(reply("<GetVersion3Result xmlns:xsi=\"http://www.w3.org/"
                                                 "2001/XMLSchema-instance\" xsi:nil=\"true\"/>")))
            .isNull());
}

TEST(VersionServiceTest, AFaultIsNoVersion)
{
    const QByteArray fault =
        "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\"><soap:Body>"
        "<soap:Fault><faultcode>soap:Server</faultcode><faultstring>9.9</faultstring></soap:Fault>"
        "</soap:Body></soap:Envelope>";
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(fault)).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(fault, "500 Internal Server Error")).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(version("9"), "404 Not Found")).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(version("9"), "500 Broken")).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(version("9"), "401 Who Are You")).isNull());
}

TEST(VersionServiceTest, WhatIsNoAnswerIsNoVersion)
{
    EXPECT_TRUE(askAnswered(LoopbackServer::answer("")).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer("<html><p>9.9")).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(QByteArray(5000, '\xff'))).isNull());
    EXPECT_TRUE(askAnswered("no web server\r\n\r\n").isNull());
    EXPECT_TRUE(askAnswered(QByteArray("")).isNull()); // hangs up
    EXPECT_TRUE(
        askAnswered("HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n" + version("9")).isNull());
}

TEST(VersionServiceTest, AnAnswerThatIsCutIsNoVersion)
{
    const QByteArray whole = version("2.6.0");
    const qsizetype end = whole.indexOf("</GetVersion3Result");
    for (qsizetype cut = 0; cut < end; ++cut)
        EXPECT_TRUE(VersionService::parseReply(whole.first(cut)).isNull()) << "cut at " << cut;
    EXPECT_EQ(VersionService::parseReply(whole), "2.6.0");
}

TEST(VersionServiceTest, NobodyThereIsNoVersion)
{
    QUrl address;
    {
        const LoopbackServer server([](const Request&) { return QByteArray(); });
        address = server.address(Path);
    }
    EXPECT_TRUE(ask(serviceAt(address)).isNull());
    EXPECT_TRUE(ask(serviceAt(QUrl("http://no-such-host.invalid/?op=GetVersion3"))).isNull());
    EXPECT_TRUE(ask(serviceAt(QUrl("nonsense"))).isNull());
}

TEST(VersionServiceTest, GivesUpAfterItsTimeLimit)
{
    const LoopbackServer server([](const Request&) { return QByteArray(); }); // never answers
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(ask(serviceAt(server.address(Path), 200ms)).isNull());
    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST(VersionServiceTest, GivesUpWhenItIsToStop)
{
    const LoopbackServer server([](const Request&) { return QByteArray(); });
    std::stop_source stop;
    const std::jthread stopper([&stop] {
        std::this_thread::sleep_for(100ms);
        stop.request_stop();
    });
    EXPECT_TRUE(ask(serviceAt(server.address(Path), 600s, stop.get_token())).isNull());
    // Asked to stop before it begins, it does not even wait.
    EXPECT_TRUE(ask(serviceAt(server.address(Path), 600s, stop.get_token())).isNull());
}

TEST(VersionServiceTest, FollowsRedirectsThatTurnItIntoAGet)
{
    for (const int status : {301, 302, 303}) {
        QUrl target;
        const LoopbackServer server([&](const Request& request) {
            return request.path == "/new" ? LoopbackServer::answer(version("2.6.0"))
                                          : LoopbackServer::redirect(status, target);
        });
        target = server.address("/new");
        EXPECT_EQ(ask(serviceAt(server.address(Path))), "2.6.0") << status;
        ASSERT_EQ(server.requests().size(), 2U) << status;
        EXPECT_EQ(server.requests()[1].method, "GET") << status;
        EXPECT_EQ(server.requests()[1].body, "") << status;
    }
}

TEST(VersionServiceTest, FollowsRedirectsThatRepeatThePost)
{
    for (const int status : {307, 308}) {
        QUrl target;
        const LoopbackServer server([&](const Request& request) {
            return request.path == "/new" ? LoopbackServer::answer(version("2.6.0"))
                                          : LoopbackServer::redirect(status, target);
        });
        target = server.address("/new");
        EXPECT_EQ(ask(serviceAt(server.address(Path))), "2.6.0") << status;
        ASSERT_EQ(server.requests().size(), 2U) << status;
        EXPECT_EQ(server.requests()[1].method, "POST") << status;
        EXPECT_EQ(server.requests()[1].body, server.requests()[0].body) << status;
    }
}

TEST(VersionServiceTest, FollowsNoRedirectForEver)
{
    QUrl target;
    const LoopbackServer server(
        [&](const Request&) { return LoopbackServer::redirect(302, target); });
    target = server.address("/again");
    EXPECT_TRUE(ask(serviceAt(server.address(Path))).isNull());
    EXPECT_LE(server.requests().size(), 7U);
}

TEST(VersionServiceTest, FollowsNoRedirectToAFile)
{
    const QTemporaryDir folder;
    Files::write(folder.filePath("version.xml"), version("9.9"));
    const QUrl file = QUrl::fromLocalFile(folder.filePath("version.xml"));
    EXPECT_TRUE(askAnswered(LoopbackServer::redirect(302, file)).isNull());
}

TEST(VersionServiceTest, TakesNoAnswerThatIsTooLarge)
{
    const QByteArray large =
        version("2.6.0") + "<!--" + QByteArray(2 * WebCall::MostBytes, 'x') + "-->";
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(large)).isNull());
    // Without a length the end is where the connection ends.
    EXPECT_TRUE(askAnswered("HTTP/1.1 200 OK\r\n\r\n" + large).isNull());
    EXPECT_TRUE(askAnswered(LoopbackServer::answer(version(QByteArray(5000, '9')))).isNull());
}

TEST(VersionServiceTest, ExpandsNoEntities)
{
    const QTemporaryDir folder;
    Files::write(folder.filePath("secret"), "9.9");
    const QByteArray external = QUrl::fromLocalFile(folder.filePath("secret")).toEncoded();
    EXPECT_TRUE(VersionService::parseReply("<!DOCTYPE x [<!ENTITY e SYSTEM \"" + external +
                                           "\">]>" + "<GetVersion3Result>&e;</GetVersion3Result>")
                    .isNull());
    QByteArray nested = "<!DOCTYPE x [<!ENTITY e0 \"9999999999\">";
    for (int i = 1; i < 20; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ";";
        nested += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    EXPECT_TRUE(
        VersionService::parseReply(nested + "]><GetVersion3Result>&e19;</GetVersion3Result>")
            .isNull());
    EXPECT_TRUE(
        VersionService::parseReply("<GetVersion3Result>&unknown;</GetVersion3Result>").isNull());
}

TEST(VersionServiceTest, ReadsThePageOfAProduct)
{
    const LoopbackServer server([](const Request&) { return LoopbackServer::answer("2.7"); });
    const VersionService service({{}, {}, {}, server.host()}, WebCall({}, 10s));
    EXPECT_EQ(service.latestVersion("Zell iPod iPhone Transfer"), "2.7");
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0].method, "GET");
    EXPECT_EQ(server.requests()[0].path, "/Zell_iPod_iPhone_Transfer.php");
}

TEST(VersionServiceTest, APageThatIsEmptyOrNoAsciiTextIsNoVersion)
{
    for (const QByteArray page : {"", "2.7 \xc3\xa9", "\xff\xfe\x32"}) {
        const LoopbackServer server(
            [page](const Request&) { return LoopbackServer::answer(page); });
        const VersionService service({{}, {}, {}, server.host()}, WebCall({}, 10s));
        EXPECT_TRUE(service.latestVersion("Zell").isNull()) << page.toHex().constData();
    }
}

TEST(VersionServiceTest, APageThatIsNotThereIsNoVersion)
{
    const LoopbackServer server(
        [](const Request&) { return LoopbackServer::answer("2.7", "404 Not Found"); });
    EXPECT_TRUE(VersionService({{}, {}, {}, server.host()}, WebCall({}, 10s))
                    .latestVersion("Zell")
                    .isNull());
    EXPECT_TRUE(VersionService(UpdateAddresses(), WebCall({}, 10s)).latestVersion("Zell").isNull());
}
