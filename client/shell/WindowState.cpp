#include "WindowState.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMainWindow>
#include <QScreen>
#include <QStyle>

#include "core/config_local.h"
#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace {

constexpr host::CHostLog kLog("Window");
constexpr const char* kKey = "Client_Window";
constexpr const char* kPlace = "place";
constexpr const char* kDocks = "docks";
constexpr const char* kPage = "page";
constexpr const char* kCollapsed = "navigationCollapsed";
// The window manager's frame is unknown before the window is shown.
constexpr QMargins kFrame(8, 32, 8, 8);

QByteArray Bytes(const QJsonObject& saved, const char* key) {
    return QByteArray::fromBase64(saved.value(QLatin1String(key)).toString().toLatin1());
}

QJsonObject Saved() {
    std::string text;
    if (!core::config_local::AppCfgReadString(kKey, text)) {
        return {};
    }
    // The toolkit's reader accepts what is not JSON.
    std::string error;
    const auto json = host::ParseJson(text, error);
    if (!json || !json->isObject()) {
        kLog.Error(FMT_STRING("The saved window is damaged: {} bytes"), text.size());
        return {};
    }
    return QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
}

void FitIntoScreen(QMainWindow& window) {
    const QScreen* screen = QApplication::screenAt(window.geometry().center());
    screen = screen ? screen : QApplication::primaryScreen();
    const QRect available = screen->availableGeometry().marginsRemoved(kFrame);
    QRect place = window.geometry();
    place.setSize(place.size().boundedTo(available.size()));
    place.moveLeft(qBound(available.left(), place.left(), available.right() + 1 - place.width()));
    place.moveTop(qBound(available.top(), place.top(), available.bottom() + 1 - place.height()));
    if (place != window.geometry()) {
        window.setGeometry(place);
    }
}

}  // namespace

namespace window_state {

State Restore(QMainWindow& window, const QSize& firstSize) {
    const QJsonObject saved = Saved();
    if (!window.restoreGeometry(Bytes(saved, kPlace))) {
        window.setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, firstSize,
                                               QApplication::primaryScreen()->availableGeometry()));
    }
    if (!window.isMaximized()) {
        FitIntoScreen(window);
    }
    window.restoreState(Bytes(saved, kDocks));
    return {saved.value(QLatin1String(kPage)).toString(), saved.value(QLatin1String(kCollapsed)).toBool()};
}

void Save(const QMainWindow& window, const State& state) {
    const QJsonObject saved{{QLatin1String(kPlace), QString::fromLatin1(window.saveGeometry().toBase64())},
                            {QLatin1String(kDocks), QString::fromLatin1(window.saveState().toBase64())},
                            {QLatin1String(kPage), state.page},
                            {QLatin1String(kCollapsed), state.collapsed}};
    if (!core::config_local::AppCfgSaveString(kKey,
                                              QJsonDocument(saved).toJson(QJsonDocument::Compact).toStdString())) {
        kLog.Error(FMT_STRING("The window's place could not be saved"));
    }
}

}  // namespace window_state
