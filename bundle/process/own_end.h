#pragma once

namespace bundle {

/// True when the program that started this tool has ended, or is ending its tools because the
/// person has canceled the run. A program that ends together with its tool gets a moment for it;
/// call this only when the tool has been stopped.
bool is_ended_by_program();

/// As above, without that moment: for a failure that a cancel may lie behind.
bool is_being_canceled();

}  // namespace bundle
