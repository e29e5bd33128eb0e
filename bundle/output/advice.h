#pragma once

#include <string_view>

#include "core/cause.h"

namespace bundle {

/// A cause in plain words.
struct Words {
    std::string_view reason;  ///< what follows "It was not converted: ", without a full stop
    std::string_view advice;  ///< what the person can do, in whole sentences
};

/// The words for a cause; every cause has some.
Words words_for(Cause cause);

}  // namespace bundle
