#include "ui/zr_ui_font.h"

#include <iterator>

QFont zr_ui_font::WithToken(QFont font, int token) {
    static constexpr int kPixels[] = {11, 12, 13, 14, 16, 20};
    if (token >= 0 && token < int(std::size(kPixels))) {
        font.setPixelSize(kPixels[token]);
    }
    return font;
}
