#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Export.h>

namespace TAV_marlo_v1 {

class Port;

/// One connection: the port it comes from and the port it goes to. Either may be empty.
class TAV_API CnxInfo {
public:
    CnxInfo();
    CnxInfo(AddRefWrapper<Port> const& output, AddRefWrapper<Port> const& input);
    CnxInfo(CnxInfo const& other);
    CnxInfo& operator=(CnxInfo const& other);
    ~CnxInfo();

    AddRefWrapper<Port> getOutputPort() const;
    AddRefWrapper<Port> getInputPort() const;
    void swapOutputInput();

    bool operator==(CnxInfo const& other) const noexcept;
    bool operator!=(CnxInfo const& other) const noexcept { return !(*this == other); }

private:
    Port* m_output = nullptr; // one reference is held on each
    Port* m_input = nullptr;
};

} // namespace TAV_marlo_v1
