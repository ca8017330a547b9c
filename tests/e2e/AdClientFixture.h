#pragma once

#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTabWidget>
#include <QToolButton>

#include "ClientFixture.h"
#include "framework/JsonText.h"
#include "support/Click.h"

/// A client with ads, and access to the ads on its screen.
class AdClientTest : public ClientTest {
protected:
    /// Finds a widget by the name of its class. The module is mapped and not linked, so its types are unavailable.
    QWidget* OfClass(const char* name) const {
        for (auto* widget : window->findChildren<QWidget*>()) {
            if (widget->inherits(name)) {
                return widget;
            }
        }
        return nullptr;
    }

    QWidget* Card() const { return OfClass("CZRAdBottomPopupView"); }
    bool IsCardSeen() const { return Card() && Card()->isVisible(); }

    /// Returns the number of colours of the screen in the widget's area: many for a picture, few for a plain
    /// background.
    size_t ColoursAt(const QWidget& widget) const {
        const QPoint place = widget.mapTo(window, QPoint());
        const QImage seen = window->screen()
                                ->grabWindow(window->winId(), place.x(), place.y(), widget.width(), widget.height())
                                .toImage();
        std::set<QRgb> colours;
        for (int x = 0; x < seen.width(); x += 2) {
            for (int y = 0; y < seen.height(); y += 2) {
                colours.insert(seen.pixel(x, y));
            }
        }
        return colours.size();
    }

    /// Returns the number of module log lines that contain `words`.
    int ParsedLine(const char* words) const {
        const auto lines = client->Log().Kept();
        return int(std::count_if(lines.begin(), lines.end(), [words](const LogEntry& line) {
            return line.record.text.contains(QString::fromLatin1(words));
        }));
    }
    bool WaitForLine(const char* words, int times = 1) {
        return WaitInRealTime([=] { return ParsedLine(words) == times; });
    }

    void Choose(const char* page) { Click(Child<QToolButton>((std::string("NavigationTab_") + page).c_str())); }

    /// Returns the visible banner at `position`; null if there is none.
    QWidget* Banner(int position) const {
        for (auto* widget : Child<QWidget>(("AdBannerSlot" + std::to_string(position)).c_str())
                                ->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (widget->inherits("CZRAdBannerView") && widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }

    bool WaitForBanner(int position) {
        return WaitInRealTime([=] { return Banner(position) != nullptr; });
    }

    /// Opens the tab that holds the page.
    void Open(const char* tabs, const char* page) {
        auto* all = Child<QTabWidget>(tabs);
        for (int tab = 0; tab < all->count(); ++tab) {
            if (all->widget(tab) == Child<QWidget>(page) || all->widget(tab)->isAncestorOf(Child<QWidget>(page))) {
                all->setCurrentIndex(tab);
            }
        }
    }

    bool WorkbenchSays(const QString& words) {
        return Child<QLabel>("WhySentence")->text().contains(words, Qt::CaseInsensitive) ||
               Child<QPlainTextEdit>("WhyDetail")->toPlainText().contains(words, Qt::CaseInsensitive);
    }
    bool WorkbenchSays(const char* words) { return WorkbenchSays(QString::fromUtf8(words)); }

    int Reported(const char* event) {
        const auto counts = server->ReportCounts();
        const auto found = counts.find(event);
        return found == counts.end() ? 0 : found->second;
    }

    /// Returns the reports of `event` about `ad`.
    std::vector<Json::Value> ReportsOn(const std::string& ad, const char* event) {
        std::vector<Json::Value> reports = server->ReportsOf(event);
        reports.erase(std::remove_if(reports.begin(), reports.end(),
                                     [&ad](const Json::Value& report) { return report["advertisement_id"] != ad; }),
                      reports.end());
        return reports;
    }

    /// Waits for the end of an ad's only exposure. Checks that reports and server received the same exposure. Returns
    /// the body of the call to the server.
    Json::Value ExpectOneExposure(const std::string& ad, int type, int position) {
        EXPECT_TRUE(WaitInRealTime([this] { return Reported("ReportAdvertisementExposureResult") >= 1; }));
        const auto results = server->ReportsOf("ReportAdvertisementExposureResult");
        const auto calls = server->HttpTo("/ad/expose");
        const auto began = ReportsOn(ad, "StartExposeAd");
        const auto ended = ReportsOn(ad, "ExposeAd");
        EXPECT_EQ(Reported("ExposeAd"), 1);
        if (results.size() != 1 || calls.size() != 1 || began.size() != 1 || ended.size() != 1) {
            ADD_FAILURE() << "results " << results.size() << ", calls " << calls.size() << ", begun " << began.size()
                          << ", ended " << ended.size();
            return Json::Value();
        }
        EXPECT_EQ(results[0]["result_code"], "0");
        EXPECT_EQ(results[0]["advertisement_ids"][0], ad);
        std::string error;
        const Json::Value told = host::ParseJson(calls[0]["body"].asString(), error).value_or(Json::Value());
        EXPECT_EQ(told["ad_type"], type);
        EXPECT_EQ(told["ad_position"], position);
        EXPECT_EQ(told["ad_id"][0], ad);
        EXPECT_NE(told["expose_id"], "");
        EXPECT_EQ(told["expose_id"], began[0]["exposure_id"]);
        EXPECT_EQ(told["expose_id"], ended[0]["exposure_id"]);
        return told;
    }

    /// Returns the ads whose pictures were loaded.
    std::multiset<std::string> Pictured() {
        std::multiset<std::string> ads;
        for (const Json::Value& picture : server->ReportsOf("AdvertisementImageResourceDownloadResult")) {
            EXPECT_EQ(picture["result_code"], "0");
            ads.insert(picture["advertisement_id"].asString());
        }
        return ads;
    }

    /// Lays out everything now. A layout request of a child leads to one of its parent.
    static void SettleLayout() {
        for (int round = 0; round < 8; ++round) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        }
    }

    /// Writes a picture of the window, or of `of`, if ZR_PICTURES names a folder. Waits first until the workbench shows
    /// all recorded entries.
    void Picture(const char* name, QWidget* of = nullptr) {
        const QByteArray folderOfPictures = qgetenv("ZR_PICTURES");
        if (!folderOfPictures.isEmpty()) {
            EXPECT_TRUE(WaitInRealTime([this] { return IsWorkbenchSettled(); }));
            SettleLayout();
            written << QString::fromLocal8Bit(folderOfPictures) + QLatin1Char('/') + QString::fromLatin1(name);
            EXPECT_TRUE((of ? of : window)->grab().save(written.last() + QStringLiteral(".png")));
        }
    }

    /// Writes a text file for each picture, with the name and the result of the case.
    void TearDown() override {
        const auto& info = *testing::UnitTest::GetInstance()->current_test_info();
        for (const QString& picture : written) {
            QFile line(picture + QStringLiteral(".txt"));
            EXPECT_TRUE(line.open(QIODevice::WriteOnly));
            line.write(QByteArray(info.name()) + (HasFailure() ? " failed" : "") + '\n');
        }
    }

private:
    QStringList written;
};
