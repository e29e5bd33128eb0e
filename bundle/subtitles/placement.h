#pragma once

#include <cstdint>
#include <string>

#include "core/result.h"

namespace bundle {

/// The handler name of the subtitle tracks that this tool adds.
inline constexpr const char* kTrackName = "Vantreo subtitles";

/// Where a track's text is shown, in pixels of the MP4 file's picture.
struct TextPlace {
    int width = 0;
    int height = 0;
    int top = 0;
};

/// The place of subtitles at the bottom of a picture: its whole width and 15 % of its height, as
/// QuickTime's file format recommends.
TextPlace subtitle_place(int picture_width, int picture_height);

/// Writes the place into the "moov" box of an MP4 file (ISO/IEC 14496-12 and 3GPP TS 26.245): the
/// size and offset of the text track named `kTrackName`, a layer in front of the picture, and a
/// text box as large as the track. False when there is no such track.
bool place_text_track(std::string& moov, const TextPlace& place);

/// Gives all other text tracks the places and layers that they have in the "moov" box that they
/// were copied from, in the same order.
void keep_places(std::string& moov, const std::string& copied_from);

/// Does both in a file, in place. `copied_from` is the path of the original, or empty.
MaybeFailure place_text_track_in(const std::string& path, const TextPlace& place,
                                 const std::string& copied_from = {});

}  // namespace bundle
