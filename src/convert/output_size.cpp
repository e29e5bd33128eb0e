#include "convert/output_size.h"

#include "convert/devices.h"

namespace {

/// The side that goes with `limit` on the longer side, in single precision, cut off, made even.
int shorter_side(int limit, int longer, int shorter) {
    const float ratio = static_cast<float>(longer) / static_cast<float>(shorter);
    const int side = static_cast<int>(static_cast<float>(limit) / ratio);
    return side - side % 2;
}

}  // namespace

FrameSize output_size(FrameSize source, int device) {
    const int limit = kDevices[known_device(device)].longest_side;
    if (source.width > source.height) {
        if (source.width > limit)
            return {limit, shorter_side(limit, source.width, source.height)};
    } else if (source.height > limit) {
        return {shorter_side(limit, source.height, source.width), limit};
    }
    return source;
}
