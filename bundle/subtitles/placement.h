#pragma once

#include <cstdint>
#include <string>

#include "core/result.h"

namespace bundle {

/// The handler's name of the subtitle tracks that this tool has added.
inline constexpr const char* kTrackName = "Vantreo subtitles";

/// Where a track's text is shown, in pixels of the MP4 file's picture.
struct TextPlace {
    int width = 0;
    int height = 0;
    int top = 0;
};

/// The place of subtitles over the lower edge of a picture: its whole width, and 15 % of its
/// height, as QuickTime's file format recommends.
TextPlace subtitle_place(int picture_width, int picture_height);

/// Writes the place into the "moov" box of an MP4 file (ISO/IEC 14496-12 and 3GPP TS 26.245): the
/// size and offset of the text track that bears `kTrackName`, a layer in front of the picture, and
/// the whole track as the text's box. False when the box holds no such track.
bool place_text_track(std::string& moov, const TextPlace& place);

/// Gives the text tracks of others the places and the layers that they have in the "moov" box of
/// the MP4 file that they were copied from, where the copies stand in the same order.
void keep_places(std::string& moov, const std::string& copied_from);

/// Does both in a file, in place; `copied_from` is the path of the other one, or empty.
MaybeFailure place_text_track_in(const std::string& path, const TextPlace& place,
                                 const std::string& copied_from = {});

}  // namespace bundle
