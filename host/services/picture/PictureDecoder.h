#pragma once

#include <atomic>

#include "picture/ImageValidator.h"
#include "ui/IPictures.h"

/// Makes a picture of bytes that were judged. Any thread but the main one: it takes as long as it takes.
namespace picture_decoder {

/// Each frame has exactly that size: scaled with its proportions kept, and cut on both sides alike. Null where the
/// bytes do not hold what they promise, or once it was cancelled. One frame where it is not to move, and where all
/// of them would take too much memory or time.
std::shared_ptr<const Picture> Decode(const std::string& bytes, const ImageInfo& facts, const QSize& size, bool moving,
                                      const std::atomic<bool>& cancelled);

}  // namespace picture_decoder
