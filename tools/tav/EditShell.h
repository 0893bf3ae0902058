#pragma once

#include "EditSession.h"

namespace tool {

/// Takes edits from a person at the terminal until the input ends or "quit" comes. What is wrong with a line is
/// told and changes nothing.
void runShell(EditSession& session);

} // namespace tool
