// Usage events from the queue to the real update server, with the real service writing the
// once-only guards.
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTcpServer>
#include <QTimer>

#include "core/QtPrinters.h"
#include "state/ProductNames.h"
#include "support/RunningService.h"
#include "support/UpdateServerProcess.h"
#include "web/Tracking.h"
#include "web/TrackingQueue.h"

namespace {

using state::product::key;

// Lets the event loop run for about `ms` milliseconds.
void wait(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

class TrackingTest : public ::testing::Test {
protected:
    TrackingTest() {
        EXPECT_TRUE(server.running()) << server.errors().toStdString();
        channel.SendToService("RegCreateKey|" + key() + "\r\nRegSetString|" + key() +
                              "|AID|a-17\r\nRegSetString|" + key() + "|Installer|Web");
        language.SetLanguageText("[[Code_Strings]]\r\nstrURL_SH_Corporate=" + server.base() +
                                 "\r\na=1\r\nb=2\r\nc=3\r\n; end\r\n");
        language.InitCodeStrings();
    }

    // The query texts of the events the server stored, oldest first.
    QStringList storedQueries() {
        QStringList queries;
        {
            auto db = QSqlDatabase::addDatabase("QSQLITE", "tracking-test");
            db.setDatabaseName(server.databasePath());
            if (db.open()) {
                QSqlQuery query("SELECT query FROM events ORDER BY id", db);
                while (query.next()) {
                    queries << query.value(0).toString();
                }
            }
        }
        QSqlDatabase::removeDatabase("tracking-test");
        return queries;
    }
    // Runs the queue until it is empty and the server has `count` events, for at most 15 s.
    QStringList sendAll(int count) {
        queue.tmrURL.start();
        QStringList queries;
        for (int i = 0; i < 150 && (queries = storedQueries()).size() < count; ++i) {
            wait(100);
        }
        queue.tmrURL.stop();
        return queries;
    }
    QString expectedQuery(const QString& action) const {
        return "source=Application&application=TW&action=" + action +
               "&aid=a-17&aid=&installer=Web&origin=&itemcount=17&applicationversion=1.0.0"
               "&installerexename=&referrerapplication=&referrerinstaller=&installdate="
               "&retry=False&trigger=&wait=&pc=QXRUVEK3094";
    }

    testing_support::UpdateServerProcess server{UPDATE_SERVER,
                                                TALLOWICK_TEST_DATA "/catalog-small.csv"};
    testing_support::RunningService service;
    state::modRegistry& registry = service.registry;
    state::modServiceCom& channel = service.channel;
    state::lst lst;
    localisation::LanguageText language{"TW"};
    bool retry = false;
    web::Tracking tracking{registry, channel, lst, language,
                           web::TrackingFacts{"TW", key(), "1.0.0", &retry, [] { return "17"; }}};
    web::TrackingQueue queue{lst};
};

// Queued at once, events arrive one at a time in their order, each with the installation's
// facts: "aid" twice, empty values kept, nothing escaped.
TEST_F(TrackingTest, EventsArriveInOrderWithTheirFacts) {
    tracking.SendTracking("Scan_Started", "", "Application");
    tracking.SendTracking("Scan_Finished", "", "Application");
    tracking.SendTracking("Print", "", "Application");
    EXPECT_EQ(lst.lstURLs.size(), 3);
    EXPECT_EQ(lst.lstURLs[0], server.base() + "/tw/tr.asp?" + expectedQuery("Scan_Started"));
    const QStringList queries = sendAll(3);
    EXPECT_EQ(queries, (QStringList{expectedQuery("Scan_Started"), expectedQuery("Scan_Finished"),
                                    expectedQuery("Print")}));
    EXPECT_TRUE(lst.lstURLs.isEmpty());
}

// A guard lets its event out once per machine; the value is written through the service
// whether or not the event went, and a value of any content holds the event back. The
// finished and the cancelled scan share one guard.
TEST_F(TrackingTest, GuardedEventsGoOutOncePerMachine) {
    tracking.SendOnce(web::trackingevent::ScanStarted, web::trackingguard::ScanTr1);
    tracking.SendOnce(web::trackingevent::ScanStarted, web::trackingguard::ScanTr1);
    tracking.SendOnce(web::trackingevent::ScanCancelled, web::trackingguard::ScanTr);
    tracking.SendOnce(web::trackingevent::ScanFinished, web::trackingguard::ScanTr);
    channel.SendToService("RegSetString|" + key() + "|TrayTr|anything");
    tracking.SendOnce(web::trackingevent::MinimizeMsgboxDisplayed, web::trackingguard::TrayTr);
    EXPECT_EQ(registry.GetStringValue(key(), "ScanTr1"), "12");
    EXPECT_EQ(registry.GetStringValue(key(), "ScanTr"), "12");
    EXPECT_EQ(registry.GetStringValue(key(), "TrayTr"), "3");
    EXPECT_EQ(sendAll(2),
              (QStringList{expectedQuery("Scan_Started"), expectedQuery("Scan_Cancelled")}));
}

// A request that never ends holds the queue for 61 ticks of tmrURL, then the next goes out.
TEST_F(TrackingTest, ARequestWithoutAnswerIsLeftAfterSixtyOneTicks) {
    QTcpServer silent;
    silent.listen(QHostAddress::LocalHost);
    tracking.PostSilentURL(QStringLiteral("http://127.0.0.1:%1/never").arg(silent.serverPort()));
    tracking.SendTracking("Print", "", "Application");
    queue.tick();
    EXPECT_TRUE(queue.busy());
    for (int tick = 0; tick < 60; ++tick) {
        wait(1);
        queue.tick();
    }
    EXPECT_EQ(lst.lstURLs.size(), 1);
    queue.tick();
    EXPECT_TRUE(lst.lstURLs.isEmpty());
    EXPECT_EQ(sendAll(1), QStringList{expectedQuery("Print")});
}

TEST_F(TrackingTest, BuildTrackingQueryAppendsTheFactsToAnyAddress) {
    retry = true;
    QString url = "http://example.invalid/get";
    EXPECT_EQ(tracking.BuildTrackingQuery(url, "Installer"),
              "http://example.invalid/get?source=Installer&application=TW&aid=a-17&aid="
              "&installer=Web&itemcount=17&applicationversion=1.0.0&installerexename="
              "&referrerapplication=&referrerinstaller=&installdate=&retry=True&trigger=&wait="
              "&pc=QXRUVEK3094");
    QString withQuery = "http://example.invalid/get?x=1";
    tracking.BuildTrackingQuery(withQuery, "Installer");
    EXPECT_TRUE(withQuery.startsWith("http://example.invalid/get?x=1&source=Installer&"));
}

}  // namespace
