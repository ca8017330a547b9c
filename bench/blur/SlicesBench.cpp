// The longest turn of the event loop while a mask of 3840 x 2160 blurs what changes behind it.
#include <QApplication>
#include <QPaintEvent>
#include <QPainter>

#include "BenchTable.h"
#include "Offscreen.h"
#include "support/SliceMeter.h"
#include "ui/ZBackgroundBlurWidget.h"

namespace {

constexpr QSize kSize(3840, 2160);
constexpr double kSliceLimitNanos = 10e6;
constexpr int kChanges = 20;
constexpr int kQuickChanges = 2;

/// Quotes of which one changes, not flagged opaque, as in a page.
class CCard : public QWidget {
public:
    explicit CCard(QWidget* parent) : QWidget(parent) { resize(kSize); }

    void Change() {
        ++m_nChanges;
        update(QRect(400, 300 + m_nChanges % 10 * 100, 300, 30));
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.fillRect(event->rect(), Qt::white);
        for (int row = event->rect().top() / 30; row <= event->rect().bottom() / 30; ++row) {
            painter.drawText(400, row * 30 + 20, QStringLiteral("1,234.56 %1").arg(m_nChanges));
        }
    }

private:
    int m_nChanges = 0;
};

double LongestSlice(int changes) {
    QWidget window;
    window.resize(kSize);
    auto* card = new CCard(&window);
    auto* mask = new QWidget(&window);
    mask->resize(kSize);
    auto* blur = new ZBackgroundBlurWidget(mask);
    blur->resize(kSize);
    window.show();
    while (blur->blurCount() == 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const CSliceMeter slices;
    for (int change = 0; change < changes; ++change) {
        const quint64 before = blur->blurCount();
        if (change % 2 == 0) {
            card->Change();
        } else {
            blur->setBlurRadius(change % 4 == 1 ? 10.0 : 20.0);  // takes all of the card again
        }
        while (blur->blurCount() == before) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    return double(slices.Longest().count());
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const bench::Options options = bench::TakeOptions(arguments);
    const bench::COffscreen application(argv);
    const double longest = LongestSlice(options.quick ? kQuickChanges : kChanges);
    return bench::PrintRows(
        {{"Longest slice of a blur of 3840 x 2160", longest, "What nobody notices", kSliceLimitNanos, 1}}, options);
}
