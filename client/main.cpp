#include <QApplication>
#include <QTimer>
#include <optional>

#include "Composition.h"
#include "FirstPaint.h"
#include "MainWindow.h"
#include "Options.h"
#include "Theme.h"
#include "Tour.h"

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zrclient"));
    const COptions options = COptions::Parse(QApplication::arguments());
    CComposition composition(options);
    theme::Install();
    theme::SetLanguage(composition.LanguageId());
    int result = 0;
    {
        // The window goes before the composition ends: nothing of it may ask a module then.
        CMainWindow window(composition);
        std::optional<CFirstPaint> firstPaint;
        if (options.firstPaint) {
            firstPaint.emplace(window);
        }
        window.show();
        composition.Start();
        CTour tour(composition, window, options.tourDir);
        if (!options.tourDir.isEmpty()) {
            QTimer::singleShot(0, &tour, [&tour] { QApplication::exit(tour.Run()); });
        }
        result = QApplication::exec();
    }
    composition.End();
    return result;
}
