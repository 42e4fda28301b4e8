#include "Window/Update/VersionCheck.h"

#include "Platform/Host.h"
#include "Window/Update/NumericOrder.h"
#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/LoopbackServer.h"

#include <optional>

namespace
{
using Request = LoopbackServer::Request;

class VersionCheckTest : public testing::Test
{
protected:
    /// A service that says this.
    void serve(const QByteArray& version)
    {
        server.emplace([version](const Request&) {
            return LoopbackServer::answer("<GetVersion3Response><GetVersion3Result>" + version +
                                          "</GetVersion3Result></GetVersion3Response>");
        });
        addresses = {server->address("/?op=GetVersion3"),
                     "http://zell.example/",
                     QUrl("http://zell.example/get"),
                     {}};
    }
    /// What is offered to the person once the service has answered.
    QStringList offers()
    {
        VersionCheck check(addresses, [this](const QString& version) { _offers.append(version); });
        EXPECT_TRUE(waitUntil([this] { return !server->requests().empty(); }));
        QDeadlineTimer more(300);
        waitUntil([&] { return !_offers.isEmpty() || more.hasExpired(); });
        return _offers;
    }

    std::optional<LoopbackServer> server;
    UpdateAddresses addresses;

private:
    QStringList _offers;
};

struct OrderCase {
    const char* name;
    const char* left;
    const char* right;
    int order;
};
void PrintTo(const OrderCase& c, std::ostream* out)
{
    *out << c.name;
}

class NumericOrder : public testing::TestWithParam<OrderCase>
{
};
} // namespace

TEST_P(NumericOrder, ComparesRunsOfDigitsAsNumbers)
{
    const QString left = QString::fromUtf8(GetParam().left);
    const QString right = QString::fromUtf8(GetParam().right);
    const auto sign = [](int value) { return int(value > 0) - int(value < 0); };
    EXPECT_EQ(sign(compareNumerically(left, right)), GetParam().order);
    EXPECT_EQ(sign(compareNumerically(right, left)), -GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    , NumericOrder,
    testing::Values(
        OrderCase{"TenIsMoreThanNine", "2.10", "2.9", 1}, OrderCase{"Equal", "2.5.1", "2.5.1", 0},
        OrderCase{"Patch", "2.5.10", "2.5.9", 1}, OrderCase{"Older", "2.4.9", "2.5.1", -1},
        OrderCase{"OnePartMore", "2.5.1.1", "2.5.1", 1}, OrderCase{"Major", "10", "9.9.9", 1},
        OrderCase{"LeadingZeros", "2.05", "2.5", 0}, OrderCase{"Empty", "", "2.5.1", -1},
        OrderCase{"Letters", "beta", "2.5.1", 1},
        OrderCase{"LongerThanAnyNumber", "2.99999999999999999999999999",
                  "2.99999999999999999999999998", 1},
        OrderCase{"LongerMeansGreater", "100000000000000000000", "99999999999999999999", 1}),
    [](const auto& c) { return std::string(c.param.name); });

TEST_F(VersionCheckTest, OffersANewerVersion)
{
    serve("2.6.0");
    EXPECT_EQ(offers(), QStringList("2.6.0"));
    const QByteArray body = server->requests()[0].body;
    EXPECT_TRUE(body.contains(">Zell iPod/iPhone to Mac Transfer</"));
    EXPECT_TRUE(body.contains(">2.5.1</"));
    EXPECT_TRUE(body.contains('>' + Host::computerName().toHtmlEscaped().toUtf8() + "</"));
    EXPECT_TRUE(body.contains('>' + Host::currentIP4Address().toUtf8() + "</"));
}

TEST_F(VersionCheckTest, OffersNothingWhenTheServerNamesThisVersion)
{
    serve("2.5.1");
    EXPECT_EQ(offers(), QStringList());
}

TEST_F(VersionCheckTest, OffersNothingOlder)
{
    serve("2.5.0");
    EXPECT_EQ(offers(), QStringList());
}

TEST_F(VersionCheckTest, OffersNothingWhenTheServerAnswersAnEmptyText)
{
    serve("");
    EXPECT_EQ(offers(), QStringList());
}

TEST_F(VersionCheckTest, ComparesByNumberAndNotByText)
{
    EXPECT_TRUE(VersionCheck::isNewer("2.5.10", "2.5.9"));
    EXPECT_FALSE(VersionCheck::isNewer("2.5.9", "2.5.10"));
    serve("2.5.10");
    EXPECT_EQ(offers(), QStringList("2.5.10"));
}

TEST_F(VersionCheckTest, AsksNobodyWithoutAllAddresses)
{
    serve("9");
    EXPECT_FALSE(UpdateAddresses().areComplete());
    for (const auto leaveOut : {&UpdateAddresses::endpoint, &UpdateAddresses::downloadPage}) {
        UpdateAddresses incomplete = addresses;
        incomplete.*leaveOut = QUrl();
        const VersionCheck check(incomplete, [](const QString&) { ADD_FAILURE(); });
        waitUntil([deadline = QDeadlineTimer(100)] { return deadline.hasExpired(); });
    }
    UpdateAddresses incomplete = addresses;
    incomplete.namespaceUri.clear();
    EXPECT_FALSE(incomplete.areComplete());
    incomplete = addresses;
    incomplete.endpoint = QUrl("file:///etc/passwd");
    EXPECT_FALSE(incomplete.areComplete());
    EXPECT_TRUE(server->requests().empty());
}

TEST_F(VersionCheckTest, EndsWhileTheServerIsSilent)
{
    server.emplace([](const Request&) { return QByteArray(); });
    addresses = {server->address("/"), "http://zell.example/", QUrl("http://zell.example/get"), {}};
    QDeadlineTimer limit(5000);
    {
        const VersionCheck check(addresses, [](const QString&) { ADD_FAILURE(); });
        EXPECT_TRUE(waitUntil([this] { return !server->requests().empty(); }));
    }
    EXPECT_FALSE(limit.hasExpired());
}
