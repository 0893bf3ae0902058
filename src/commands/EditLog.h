#pragma once

#include "commands/Address.h"

#include <memory>
#include <vector>

namespace TAV_marlo_v1::detail {

/// What takes one change of the graph back exactly. It names what it needs by address.
class Edit {
public:
    Edit() = default;
    Edit(Edit const&) = delete;
    Edit& operator=(Edit const&) = delete;
    virtual ~Edit();

    /// Runs on the graph as it was right after the change. A change that did not come about after all,
    /// because memory ended on the way, is taken back by doing nothing.
    /// @return false: what was changed is gone, or a veto
    virtual bool takeBack(Scene const& scene) = 0;
};

/// The changes of one run of a command, in their order. Whoever changes something adds the edit first,
/// so that whatever happens on the way can be taken back, and drops it again when nothing changed.
class EditLog {
public:
    void add(std::unique_ptr<Edit> edit) { m_edits.push_back(std::move(edit)); }
    void dropLast() noexcept { m_edits.pop_back(); }
    void clear() noexcept { m_edits.clear(); }
    bool empty() const noexcept { return m_edits.empty(); }

    /// Takes everything back, the last first, and forgets it. Goes on past what fails.
    bool takeBack(Scene const& scene) { return takeBackTo(0, scene); }
    /// So much is noted: what comes behind can be taken back alone.
    std::size_t mark() const noexcept { return m_edits.size(); }
    bool takeBackTo(std::size_t mark, Scene const& scene);

    /// Adds the edit, makes the change, and drops the edit again when the change says that nothing came
    /// of it. @return what the change says
    template <class Change>
    bool change(std::unique_ptr<Edit> edit, Change&& make)
    {
        add(std::move(edit));
        if (make())
            return true;
        dropLast();
        return false;
    }

private:
    std::vector<std::unique_ptr<Edit>> m_edits;
};

} // namespace TAV_marlo_v1::detail
