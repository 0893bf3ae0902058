#pragma once

#include <tav/Export.h>

#include <memory>

namespace TAV_marlo_v1 {

class ChangeBracketClient;

/// Keeps a bracket open on a client for its own lifetime. Movable, not copyable. The client may
/// die first; then the end of the bracket does nothing.
class TAV_API ChangeBracket {
public:
    /// A null client makes an empty bracket.
    explicit ChangeBracket(ChangeBracketClient* client);
    ChangeBracket(ChangeBracket&& other) noexcept;
    ChangeBracket(ChangeBracket const&) = delete;
    ChangeBracket& operator=(ChangeBracket const&) = delete;
    /// Ends this bracket first, then those taken over by append, last first.
    ~ChangeBracket();

    /// Takes over `other`, which then ends when this one ends.
    void append(ChangeBracket&& other);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null once moved from
};

} // namespace TAV_marlo_v1
