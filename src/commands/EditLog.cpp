#include "commands/EditLog.h"

namespace TAV_marlo_v1::detail {

Edit::~Edit() = default;

bool EditLog::takeBackTo(std::size_t mark, Scene const& scene)
{
    bool isWhole = true;
    while (m_edits.size() > mark) {
        isWhole = m_edits.back()->takeBack(scene) && isWhole;
        m_edits.pop_back(); // not before: where memory ends, the rest can be taken back later
    }
    return isWhole;
}

} // namespace TAV_marlo_v1::detail
