#pragma once

/// Width and height of a picture in pixels.
struct FrameSize {
    int width = 0;
    int height = 0;
};

/// Size of the output for a source of size `source` (both sides above 0) on device `device` (an
/// index of the device choice; an unknown one counts as the first). The longer side is limited to
/// what the device shows; the other one follows in proportion and is made even. A source within
/// the limit keeps its size, odd sides included.
FrameSize output_size(FrameSize source, int device);
