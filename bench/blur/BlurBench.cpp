// Compares the blur widget with the toolkit's effect of the same sigma, from the picture behind to painted pixels. The
// second row paints again without a change.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QGraphicsBlurEffect>
#include <QPaintEvent>
#include <QPainter>

#include "BenchTable.h"
#include "Offscreen.h"
#include "ui/ZBackgroundBlurWidget.h"

namespace {

constexpr QSize kSize(1280, 720);
constexpr double kRadius = 20.0;

/// A card with text, edges and colours, not flagged opaque, as in a page. It has two pictures, which it can exchange.
class CCard : public QWidget {
public:
    explicit CCard(QWidget* parent) : QWidget(parent), m_pictures{Picture(3), Picture(5)} { resize(kSize); }

    void Exchange() { m_nShown = 1 - m_nShown; }

protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        const QRect area = event->rect();
        painter.drawPixmap(area, m_pictures[m_nShown], area);
    }

private:
    static QPixmap Picture(int seed) {
        QPixmap picture(kSize);
        QLinearGradient ground(0, 0, kSize.width(), kSize.height());
        ground.setColorAt(0, Qt::darkBlue);
        ground.setColorAt(1, Qt::yellow);
        QPainter painter(&picture);
        painter.fillRect(picture.rect(), ground);
        for (int row = 0; row < 40; ++row) {
            painter.setPen(row % 2 == 0 ? Qt::white : Qt::black);
            painter.drawText(seed * row, 18 * row, QStringLiteral("1,234.56 +7.89% the price of the day").repeated(5));
            painter.fillRect(row * 31, row * 17 * seed % 700, 20, 40, QColor::fromHsv(row * 8, 200, 200));
        }
        return picture;
    }

    const QPixmap m_pictures[2];
    int m_nShown = 0;
};

/// A window that shows a card.
class CScene : public QWidget {
public:
    CScene() {
        resize(kSize);
        card = new CCard(this);
    }
    CCard* card;
};

/// A card behind a mask.
class CMasked : public CScene {
public:
    CMasked() {
        auto* mask = new QWidget(this);
        mask->resize(kSize);
        blur = new ZBackgroundBlurWidget(mask);
        blur->setBlurRadius(kRadius);
        blur->resize(kSize);
        show();
        QCoreApplication::processEvents();
    }
    ZBackgroundBlurWidget* blur;
};

/// A card under the toolkit's effect.
class CEffect : public CScene {
public:
    CEffect() {
        auto* effect = new QGraphicsBlurEffect(card);
        effect->setBlurRadius(kRadius);
        card->setGraphicsEffect(effect);
        show();
        QCoreApplication::processEvents();
    }
};

void Changed(benchmark::State& state, CScene* scene) {
    for (auto _ : state) {
        scene->card->Exchange();
        scene->card->repaint();
    }
}

void Blur(benchmark::State& state, CMasked* masked) {
    const quint64 before = masked->blur->blurCount();
    Changed(state, masked);
    if (masked->blur->blurCount() - before != quint64(state.iterations())) {
        state.SkipWithError("A change was not blurred once");
    }
}

void Repaint(benchmark::State& state, CMasked* masked) {
    const quint64 before = masked->blur->blurCount();
    for (auto _ : state) {
        masked->blur->repaint();
    }
    if (masked->blur->blurCount() != before) {
        state.SkipWithError("A repaint without change blurred");
    }
}

constexpr const char* kEffect = "The toolkit's effect of this radius";
constexpr const char* kBlur = "Blur of 1280 x 720 at radius 20, painted";
constexpr const char* kRepaint = "Blur painted again without change";
constexpr const char* kPlain = "The card alone";

}  // namespace

int main(int argc, char** argv) {
    const bench::COffscreen application(argv);

    CScene plain;
    plain.show();
    QCoreApplication::processEvents();
    CMasked masked;
    CEffect effect;
    benchmark::RegisterBenchmark(kPlain, Changed, &plain);
    benchmark::RegisterBenchmark(kEffect, Changed, &effect);
    benchmark::RegisterBenchmark(kBlur, Blur, &masked);
    benchmark::RegisterBenchmark(kRepaint, Repaint, &masked);
    return bench::RunComparisons(argc, argv, {{kBlur, kEffect, 0.25}, {kRepaint, kEffect, 0.08}, {kPlain, kEffect, 0}});
}
