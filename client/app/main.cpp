#include <QApplication>
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
        // Not ahead of the first frame: mapping modules takes its time, and the server takes the processor.
        QObject::connect(&window, &CMainWindow::Appeared, &composition, &CComposition::Start);
        CTour tour(composition, window, options.tourDir);
        if (!options.tourDir.isEmpty()) {
            QObject::connect(&window, &CMainWindow::Completed, &tour, [&tour] { QApplication::exit(tour.Run()); });
        }
        window.show();
        result = QApplication::exec();
    }
    composition.End();
    return result;
}
