#pragma once

namespace bundle {

/// True when the program that started this tool has ended, or is stopping its tools after a cancel.
/// Waits a moment for a program that ends together with its tool; call it only after a stop.
bool is_ended_by_program();

/// The same without waiting: for a failure that a cancel may have caused.
bool is_being_canceled();

}  // namespace bundle
