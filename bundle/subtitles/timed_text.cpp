#include "subtitles/timed_text.h"

#include <utility>

#include "mp4/box_writing.h"
#include "subtitles/styled_text.h"

namespace bundle {

namespace {

// ffmpeg's defaults.
constexpr std::uint64_t kFontSize = 16;
constexpr std::string_view kFontName = "Arial";
constexpr std::uint64_t kFont = 1;

// The flags for "some samples are forced" and "all are" (QuickTime File Format, subtitle media).
constexpr std::uint64_t kForced = 0xC0000000;
constexpr std::size_t kLongestText = 0xFFFF;
constexpr std::uint64_t kMilliseconds = 1000;
// As in ffmpeg: one alternate group for each kind of track.
constexpr std::uint64_t kSubtitleGroup = 3;

/// A text and how long it is shown.
struct Sample {
    std::string bytes;
    std::int64_t length_ms = 0;
};

std::string style_record(const StyledRun& run) {
    const LetterStyle& style = run.style;
    const std::uint64_t switches =
        (style.bold ? 1U : 0U) | (style.italic ? 2U : 0U) | (style.underlined ? 4U : 0U);
    return number(run.first, 2) + number(run.end, 2) + number(kFont, 2) + number(switches, 1) +
           number(kFontSize, 1) + number(std::uint64_t{style.colour} << 8 | 0xFF, 4);
}

std::string sample_of(const std::string& marked) {
    const PlainText plain = take_apart(marked, kLongestText);
    std::string records;
    for (const StyledRun& run : plain.runs) {
        records += style_record(run);
    }
    return number(plain.text.size(), 2) + plain.text +
           (records.empty() ? "" : box("styl", number(plain.runs.size(), 2) + records));
}

std::vector<Sample> samples_of(const TextTrack& track) {
    std::vector<Sample> samples;
    std::int64_t time = 0;
    for (const Cue& cue : track.cues) {
        if (cue.start_ms > time) {
            samples.push_back({number(0, 2), cue.start_ms - time});
        }
        samples.push_back({sample_of(cue.text), cue.end_ms - cue.start_ms});
        time = cue.end_ms;
    }
    // Else players show the last cue until the end of the movie.
    samples.push_back({number(0, 2), 0});
    return samples;
}

std::string sample_entry(const TextTrack& track, const TextPlace& place) {
    const std::string box_of_text = number(0, 4) +
                                    number(static_cast<std::uint64_t>(place.height), 2) +
                                    number(static_cast<std::uint64_t>(place.width), 2);
    const std::string fonts = box("ftab", number(1, 2) + number(kFont, 2) +
                                              number(kFontName.size(), 1) + std::string(kFontName));
    return box("tx3g", number(0, 6) + number(1, 2) + number(track.is_forced ? kForced : 0, 4) +
                           number(0x01FF, 2) +  // centred, at the bottom
                           number(0, 4) + box_of_text + style_record({}) + fonts);
}

std::string sample_table(const TextTrack& track, const TrackSetting& setting) {
    std::string times;
    std::string sizes;
    const auto samples = samples_of(track);
    for (const Sample& sample : samples) {
        times += number(1, 4) + number(static_cast<std::uint64_t>(sample.length_ms), 4);
        sizes += number(sample.bytes.size(), 4);
    }
    const std::string count = number(samples.size(), 4);
    return box("stbl", full_box("stsd", 0, number(1, 4) + sample_entry(track, setting.place)) +
                           full_box("stts", 0, count + times) +
                           full_box("stsc", 0, number(1, 4) + number(1, 4) + count + number(1, 4)) +
                           full_box("stsz", 0, number(0, 4) + count + sizes) +
                           full_box("co64", 0, number(1, 4) + number(setting.samples_at, 8)));
}

std::string track_head(const TextTrack& track, const TrackSetting& setting, std::uint64_t length) {
    const auto fixed = [](int pixels) {
        return number(static_cast<std::uint64_t>(pixels) << 16, 4);
    };
    const std::string matrix = number(0x10000, 4) + number(0, 12) + number(0x10000, 4) +
                               number(0, 4) + number(0, 4) + fixed(setting.place.top) +
                               number(0x40000000, 4);
    constexpr std::uint64_t kInMovie = 2;
    return full_box("tkhd", track.is_enabled ? kInMovie | 1 : kInMovie,
                    number(0, 8) + number(setting.id, 4) + number(0, 4) +
                        number(length * setting.movie_scale / kMilliseconds, 4) + number(0, 8) +
                        number(0xFFFF, 2) +  // a layer in front of the picture's
                        number(kSubtitleGroup, 2) + number(0, 4) + matrix +
                        fixed(setting.place.width) + fixed(setting.place.height));
}

/// Three letters of five bits each.
std::uint64_t packed(const std::string& language) {
    std::uint64_t code = 0;
    for (const char letter : language) {
        code = code << 5 | static_cast<std::uint64_t>(letter - 0x60);
    }
    return code;
}

}  // namespace

std::string text_samples(const TextTrack& track) {
    std::string bytes;
    for (const Sample& sample : samples_of(track)) {
        bytes += sample.bytes;
    }
    return bytes;
}

std::string text_trak(const TextTrack& track, const TrackSetting& setting) {
    const auto length =
        track.cues.empty() ? 0 : static_cast<std::uint64_t>(track.cues.back().end_ms);
    const std::string media_head =
        full_box("mdhd", 0,
                 number(0, 8) + number(kMilliseconds, 4) + number(length, 4) +
                     number(packed(track.language), 2) + number(0, 2));
    const std::string handler =
        full_box("hdlr", 0, number(0, 4) + "sbtl" + number(0, 12) + track.name + number(0, 1));
    const std::string in_this_file =
        box("dinf", full_box("dref", 0, number(1, 4) + full_box("url ", 1, "")));
    const std::string information =
        box("minf", full_box("nmhd", 0, "") + in_this_file + sample_table(track, setting));
    return box("trak", track_head(track, setting, length) +
                           box("mdia", media_head + handler + information));
}

}  // namespace bundle
