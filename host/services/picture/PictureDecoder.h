#pragma once

#include <atomic>

#include "picture/ImageValidator.h"
#include "ui/IPictures.h"

/// Decodes validated images. Any thread except the main thread, since it may take seconds.
namespace picture_decoder {

/// Each frame has exactly `size`: scaled with its aspect ratio kept, centred and cropped. Null if decoding fails or was
/// cancelled. One frame if not `moving`, or if all frames exceed the limits on memory and time.
std::shared_ptr<const Picture> Decode(const std::string& bytes, const ImageInfo& info, const QSize& size, bool moving,
                                      const std::atomic<bool>& cancelled);

}  // namespace picture_decoder
