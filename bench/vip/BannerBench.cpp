// A banner of a membership and the strip of a right, each from its constructor to painted pixels. The reference is the
// same widgets of the kit, made and painted by hand.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <algorithm>
#include <ctime>

#include "BenchTable.h"
#include "NullHost.h"
#include "Offscreen.h"
#include "Premium/View/ZRPremiumTimeActivationStateWidget.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/View/ZRVipBannerWidget.h"
#include "premium_svr.pb.h"
#include "support/VirtualEventDispatcher.h"
#include "ui/ZButton.h"
#include "ui/ZMultilineTextLabel.h"
#include "ui/ZResource.h"
#include "ui/ZSvgWidget.h"
#include "ui/ZText.h"
#include "ui/zr_ui_res.h"

namespace {

constexpr auto kRight = EnPremiumAccess(98);
constexpr QSize kSize(400, 40);
constexpr char kTitle[] = "Real-time quotes of all markets are part of the membership";
constexpr char kAction[] = "Open it now";

constexpr const char* kBanner = "Banner made, filled and painted";
constexpr const char* kBare = "The banner's widgets of the kit, bare";

constexpr const char* kStrip = "Strip made, filled and painted";
constexpr const char* kBareStrip = "The strip's widgets of the kit, bare";

double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

QWidget* MakeBanner(QWidget* page) {
    return new CZRVipBannerWidget(kRight, ZRVipUIDataMain, QStringLiteral("page"), page);
}

QWidget* MakeBare(QWidget* page, const QPixmap& mark) {
    auto* strip = new QWidget(page);
    auto* icon = new QLabel(strip);
    icon->setScaledContents(true);
    icon->setFixedSize(16, 16);
    icon->setPixmap(mark);
    auto* gap = new QWidget(strip);
    gap->setFixedWidth(4);
    auto* separator = new QFrame(strip);
    separator->setFixedSize(1, 12);
    separator->hide();
    auto* text = new ZMultilineTextLabel(strip);
    text->setLineHeight(16);
    text->setMaximumHeight(32);
    text->setTextWithFormat(QString::fromLatin1(kTitle), Qt::AutoText);
    auto* button = new ZButton(strip);
    button->setFixedHeight(24);
    button->setText(QString::fromLatin1(kAction));
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(8, 4, 4, 4);
    layout->setSpacing(0);
    layout->addWidget(icon);
    layout->addWidget(gap);
    layout->addWidget(separator);
    layout->addWidget(text);
    layout->addStretch();
    layout->addWidget(button);
    return strip;
}

QWidget* MakeStrip(QWidget* page) {
    return new CZRPremiumTimeActivationStateWidget(QString::fromLatin1(kTitle), QString::fromLatin1(kAction),
                                                   QStringLiteral("D"), QString(), 12, page);
}

QWidget* MakeBareStrip(QWidget* page) {
    auto* strip = new QWidget(page);
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(8, 4, 4, 4);
    auto* tag = new ZSvgWidget(strip);
    tag->setSvgIconName(ZResource::icon_premium_tag_normal);
    tag->setFixedSize(54, 16);
    layout->addWidget(tag);
    for (const char* words : {kTitle, "12", " days"}) {
        auto* text = new ZText(QString::fromLatin1(words), strip);
        text->setFixedHeight(16);
        layout->addWidget(text);
    }
    auto* hidden = new ZText(strip);
    hidden->hide();
    layout->addStretch();
    auto* button = new ZButton(strip);
    button->setZrStyle(ZButton::kStrip);
    button->setText(QString::fromLatin1(kAction));
    layout->addWidget(button);
    return strip;
}

template <class Text, class Make>
void MadeAndPainted(benchmark::State& state, CNullHost& host, Make make) {
    QWidget page;
    page.resize(500, 300);
    page.show();
    host.time.Settle();
    QPixmap target(kSize);
    for (auto _ : state) {
        const double begin = ThreadSeconds();
        QWidget* strip = make(&page);
        strip->resize(kSize);
        strip->show();
        strip->render(&target);
        state.SetIterationTime(ThreadSeconds() - begin);

        const QList<Text*> texts = strip->findChildren<Text*>();
        const bool hasText =
            std::any_of(texts.begin(), texts.end(), [](const Text* text) { return text->isVisible(); });
        const auto* button = strip->findChild<ZButton*>();
        if (!hasText || !button || !button->isVisible()) {
            state.SkipWithError("A text or a button is missing");
        }
        delete strip;
        host.time.Settle();
    }
}

}  // namespace

int main(int argc, char** argv) {
    const bench::COffscreen application(argv, new CVirtualEventDispatcher);

    CNullHost host{std::string()};
    CZRPremiumManager::Singleton()->Init();
    CPremiumUIAccessData record;
    record.strUIType = QStringLiteral("D");
    record.strMainTitle = QString::fromLatin1(kTitle);
    record.strMainBtn = QString::fromLatin1(kAction);
    record.nMainBtnUrlID = 301;
    record.nActivationType = web_premium_access::NOT_ACTIVATION;
    CZRPremiumManager::Singleton()->SetUIAccessData(kRight, record);
    const QPixmap mark =
        zr_ui_res::TResource<QPixmap>(QString(ZResource::img_vip_16_normal)).value(1.0).scaled(QSize(16, 16));

    benchmark::RegisterBenchmark(kBanner, [&](benchmark::State& state) {
        MadeAndPainted<ZMultilineTextLabel>(state, host, MakeBanner);
    })->UseManualTime();
    benchmark::RegisterBenchmark(kBare, [&](benchmark::State& state) {
        MadeAndPainted<ZMultilineTextLabel>(state, host, [&](QWidget* page) { return MakeBare(page, mark); });
    })->UseManualTime();
    benchmark::RegisterBenchmark(kStrip, [&](benchmark::State& state) {
        MadeAndPainted<ZText>(state, host, MakeStrip);
    })->UseManualTime();
    benchmark::RegisterBenchmark(kBareStrip, [&](benchmark::State& state) {
        MadeAndPainted<ZText>(state, host, MakeBareStrip);
    })->UseManualTime();
    return bench::RunComparisons(argc, argv, {{kBanner, kBare, 3}, {kStrip, kBareStrip, 3}});
}
