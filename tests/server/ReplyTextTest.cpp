// The texts of the protocol in process: queries decoded, and reply values that the desktop
// program's first-occurrence reading takes back unchanged, however hostile the catalog.
#include <gtest/gtest.h>

#include "ServerHarness.h"
#include "server/QueryText.h"
#include "server/ReplyPage.h"

namespace {

using scan::UpdateRecord;
using server::QueryEncoding;

TEST(ReplyTextTest, HostileValuesReadBackFieldByField) {
    const QStringList hostile = {"COM=x",
                                 "x=COM",
                                 "=DUR",
                                 "DUR=",
                                 "UID",
                                 "xUID",
                                 "UIDx=",
                                 "FVR1",
                                 "pvr1=low",
                                 "\"=UPDATEINFORMATION -->",
                                 "ERR_CODE:4000|ERR_DESC:no",
                                 "a=b=c",
                                 "==",
                                 "=",
                                 "",
                                 "Latest release 2.0 of 2026-01-01",
                                 "tab\there",
                                 "hur=HUR=hur"};
    for (const QString& value : hostile) {
        const QString safe = server::safeText(value);
        for (const QString& uid : {QString("u-1"), value}) {
            const server::UpdateInformation information{value, value, {}, value, uid};
            EXPECT_EQ(server_testing::readAsClient(server::foundPage(information)),
                      (UpdateRecord{safe, safe, "", "", "", "", safe, server::safeText(uid), "", "",
                                    scan::updatestatus::Parsed}))
                << value.toStdString();
        }
        // Addresses keep their meaning: only escapes are added.
        const QString address = "http://example.test/get?" + value;
        const UpdateRecord record =
            server_testing::readAsClient(server::foundPage({"1", "1", address, "c", "u"}));
        EXPECT_EQ(record.DUR, server::safeAddress(address)) << value.toStdString();
        EXPECT_EQ(record.COM, "c");
    }
    // Plain values pass untouched; the page is in the code page, "?" for what it lacks.
    EXPECT_EQ(server::safeText("Latest release 1.2 of 2026-01-01"),
              "Latest release 1.2 of 2026-01-01");
    EXPECT_EQ(server::safeAddress("https://example.test/a?b=c&d=e"),
              "https://example.test/a?b=c&d=e");
    const QByteArray page = server::foundPage({"1", "1", {}, "Caf\u00e9 \u8f6f", "u"});
    EXPECT_TRUE(page.contains("COM=Caf\xe9 ?=COM"));
    EXPECT_EQ(server_testing::readAsClient(server::errorPage("4002", "a \"b\" | c")).ErrDesc,
              "a 'b' / c");
}

TEST(ReplyTextTest, QueriesDecodeByTheirEncoding) {
    const auto one = [](const char* query, QueryEncoding encoding) {
        const auto parameters = server::parseQuery(QString::fromLatin1(query), encoding);
        return parameters && !parameters->isEmpty() ? parameters->front().value.toStdString()
                                                    : std::string("<none>");
    };
    EXPECT_EQ(one("app=Caf%E9%80", QueryEncoding::Windows1252), "Caf\u00e9\u20ac");
    EXPECT_EQ(one("app=a+b", QueryEncoding::Windows1252), "a+b");
    EXPECT_EQ(one("app=50%", QueryEncoding::Windows1252), "<none>");
    EXPECT_EQ(one("wait=50%", QueryEncoding::Raw), "50%");
    EXPECT_EQ(one("place=M%C3%BCnchen", QueryEncoding::Raw), "M\u00fcnchen");
    EXPECT_EQ(one("place=M%FCnchen", QueryEncoding::Raw), "M\u00fcnchen");
    EXPECT_EQ(one("x=a%0Ab", QueryEncoding::Raw), "<none>");

    const auto parameters =
        server::parseQuery(u"aid=1&&aid=2&flag&=v&k=a=b", QueryEncoding::Raw).value();
    ASSERT_EQ(parameters.size(), 5);
    EXPECT_EQ(parameters[1].value, "2");
    EXPECT_EQ(parameters[2].key, "flag");
    EXPECT_EQ(parameters[3].key, "");
    EXPECT_EQ(parameters[4].value, "a=b");
    EXPECT_EQ(server::queryValue(parameters, u"AID").value_or("-"), "1");
    EXPECT_FALSE(server::queryValue(parameters, u"pub").has_value());
}

}  // namespace
