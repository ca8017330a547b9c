// The longest slice of the main thread while the picture service loads a picture of 4,000 by 3,000 pixels into a
// widget. The reference is a delay that a user does not notice.
#include <fmt/format.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>

#include "BenchTable.h"
#include "LargePictures.h"
#include "Offscreen.h"
#include "PictureSource.h"
#include "core/IClientState.h"
#include "framework/Ports.h"
#include "picture/PictureService.h"
#include "support/SliceMeter.h"
#include "ui/ZRWebImageWidget.h"

namespace {

constexpr int kPictures = 9;
constexpr int kLimitMs = 60'000;
constexpr double kSliceLimitNanos = 10e6;

class CInternalBuild : public IClientState {
public:
    bool IsReleaseAppVersion() const override { return false; }
};

struct Format {
    const char* name;
    QByteArray bytes;
};

/// Returns the longest slice in nanoseconds; 0 if no picture was received.
double LongestSlice(CPictureService& pictures, const QString& url) {
    ZRWebImageWidget widget;
    widget.resize(720, 540);
    widget.show();
    QCoreApplication::processEvents();
    bool good = false;
    QObject::connect(&widget, &ZRWebImageWidget::ImageLoadStatusSignal, &widget,
                     [&](const QString&, ZRImageLoadStatus status) {
                         good = status == kImageLoadSucceeded;
                         // After the picture is painted.
                         QTimer::singleShot(50, &widget, [] { QCoreApplication::quit(); });
                     });
    QTimer::singleShot(kLimitMs, &widget, [] { QCoreApplication::quit(); });
    const CSliceMeter slices;
    widget.SetUrl(url, QString());
    QCoreApplication::exec();
    return good && pictures.RunningCount() == 0 ? double(slices.Longest().count()) : 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const bench::Options options = bench::TakeOptions(arguments);
    const bench::COffscreen application(argv);
    QApplication::setQuitOnLastWindowClosed(false);

    const QTemporaryDir folder;
    const CInternalBuild state;
    CPictureService pictures(state, folder.filePath(QStringLiteral("pictures")));
    host::Ports ports;
    ports.pictures = &pictures;
    host::Install(ports);
    std::vector<bench::Row> rows;
    for (const Format& format : {Format{"jpeg", large_pictures::Encoded("jpeg")},
                                 Format{"png", large_pictures::Encoded("png")}, Format{"gif", large_pictures::Gif()}}) {
        const CPictureSource source(format.bytes);
        double longest = 0;
        for (int i = 0; i < (options.quick ? 1 : kPictures); ++i) {
            const double slice = LongestSlice(pictures, source.Url() + QStringLiteral("/%1").arg(i));
            if (slice <= 0) {
                fmt::print(stderr, "The {} picture did not come\n", format.name);
                return 1;
            }
            longest = std::max(longest, slice);
        }
        rows.push_back({fmt::format("Longest slice, 4,000 by 3,000 {} comes", format.name), longest,
                        "What nobody notices", kSliceLimitNanos, 1});
    }
    host::Uninstall();
    return bench::PrintRows(rows, options);
}
