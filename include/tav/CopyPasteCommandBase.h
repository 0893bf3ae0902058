#pragma once

#include <tav/Export.h>
#include <tav/String.h>

namespace TAV_marlo_v1 {

/// The clipboard of the library: the system's, if there is a GUI application, with a text of the
/// process that stands in where the system's is not wanted, not there, or does not keep what it is given.
class TAV_API CopyPasteCommandBase {
public:
    /// The system clipboard's text; the process's own when that is empty or is not used.
    static String getClipboardData();
    /// A null text is "".
    static void setClipboardData(char const* text);
    static bool useLocalClipboard();
    /// While set, the system clipboard is neither read nor written.
    static void setUseLocalClipboard(bool local);

protected:
    CopyPasteCommandBase() = default;
    ~CopyPasteCommandBase() = default;
};

} // namespace TAV_marlo_v1
