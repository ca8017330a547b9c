#pragma once

#include <QImage>
#include <QScreen>
#include <QToolButton>

#include "ClientFixture.h"
#include "support/Click.h"

/// A client with ads, and what of them is on its screen.
class AdClientTest : public ClientTest {
protected:
    /// What is of a class of the module, which is mapped and not linked.
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

    /// How many colours of the screen there are where the widget is: of a picture many, of a bare ground a few.
    size_t ColoursAt(const QWidget& widget) const {
        const QPoint place = widget.mapTo(window.get(), QPoint());
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

    /// How many lines of the module's hold these words.
    int Said(const char* words) const {
        const auto lines = client->Log().Kept();
        return int(std::count_if(lines.begin(), lines.end(), [words](const LogEntry& line) {
            return line.record.text.contains(QString::fromLatin1(words));
        }));
    }
    bool WaitForLine(const char* words, int times = 1) {
        return WaitInRealTime([=] { return Said(words) == times; });
    }

    void Choose(const char* page) { Click(Child<QToolButton>((std::string("NavigationTab_") + page).c_str())); }

    /// The banner in that position's place; null while it is not seen.
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

    int Reported(const char* event) {
        const auto counts = server->ReportCounts();
        const auto found = counts.find(event);
        return found == counts.end() ? 0 : found->second;
    }

    /// The ads whose pictures came in well.
    std::multiset<std::string> Pictured() {
        std::multiset<std::string> ads;
        for (const Json::Value& picture : server->ReportsOf("AdvertisementImageResourceDownloadResult")) {
            EXPECT_EQ(picture["result_code"], "0");
            ads.insert(picture["advertisement_id"].asString());
        }
        return ads;
    }

    /// For who wants to look: ZR_PICTURES names a folder.
    void Picture(const char* name, QWidget* of = nullptr) {
        const QByteArray folderOfPictures = qgetenv("ZR_PICTURES");
        if (!folderOfPictures.isEmpty()) {
            const QString file =
                QString::fromLocal8Bit(folderOfPictures) + QLatin1Char('/') + QString::fromLatin1(name);
            EXPECT_TRUE((of ? of : window.get())->grab().save(file + QStringLiteral(".png")));
        }
    }
};
