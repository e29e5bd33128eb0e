#pragma once

#include <functional>
#include <string>

#include "core/result.h"
#include "core/stop_signals.h"
#include "ffmpeg/picture_gaps.h"
#include "ffmpeg/plan.h"
#include "process/progress.h"

namespace bundle {

/// What one run of ffmpeg has made.
struct EncodedFile {
    double duration = 0;       ///< seconds that can be played, without a damaged end
    std::string messages;      ///< of the system's ffmpeg; usually empty
    FrameCount frames = {};    ///< known if `ConversionPlan::fills_gaps`
    bool lacks_audio = false;  ///< though the plan has audio; the file is unfinished then
};

/// Runs the plan: encodes the movie into the existing file `output`, adds its subtitles and checks
/// the result. Blocks; `show` is called as by `run_ffmpeg`.
Result<EncodedFile> run_plan(const ConversionPlan& plan, const std::string& output,
                             const std::function<void(const Progress&)>& show,
                             const StopSignals& stop);

}  // namespace bundle
