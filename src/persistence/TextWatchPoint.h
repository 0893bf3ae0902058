#pragma once

#include <tav/Port.h>
#include <tav/WatchPoint.h>

namespace TAV_marlo_v1 {

/// Stands in where no back end makes a watch point: records nothing, but remembers whether it is
/// enabled, so that saving again loses nothing.
class TextWatchPoint final : public WatchPoint {
public:
    void enable(bool on) override { m_enabled = on; }
    bool enabled() const override { return m_enabled; }

private:
    ~TextWatchPoint() override;

    bool m_enabled = false;
};

/// Gives the port a watch point, the owner's or else a TextWatchPoint; one that is there stays.
void ensureWatchPoint(Port& port, bool enabled);

} // namespace TAV_marlo_v1
