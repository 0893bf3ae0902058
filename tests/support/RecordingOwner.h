#pragma once

#include <tav/PortList.h>
#include <tav/PortNotification.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

/// A port owner that writes down every question and notice as "hook port [other]" and says yes unless it
/// was told to refuse a hook. What is written down is the contract: the order of the calls.
class RecordingOwner : public TAV_marlo_v1::PortNotification {
public:
    using Handle = TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port>;
    using Calls = std::vector<std::string>;

    void refuse(std::string const& hook) { m_refused.insert(hook); }
    Calls takeCalls() { return std::exchange(m_calls, {}); }

    bool onPortAddConnection(Handle const& port, Handle const& other) override
    {
        return ask("onPortAddConnection", named(port, other));
    }
    void onPortConnectionAdded(Handle const& port, Handle const& other) override
    {
        note("onPortConnectionAdded", named(port, other));
    }
    bool onPortRemoveConnection(Handle const& port, Handle const& other) override
    {
        return ask("onPortRemoveConnection", named(port, other));
    }
    void onPortConnectionRemoved(Handle const& port, Handle const& other) override
    {
        note("onPortConnectionRemoved", named(port, other));
    }
    bool onPortSetDataType(Handle const& port, TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::PortDataType> const&) override
    {
        return ask("onPortSetDataType", port->getName());
    }
    void onPortDataTypeChanged(Handle const& port,
                               TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::PortDataType> const&) override
    {
        note("onPortDataTypeChanged", port->getName());
    }
    bool onPortListPortAdd(TAV_marlo_v1::PortList const&, Handle const& port) override
    {
        return ask("onPortListPortAdd", port->getName());
    }
    void onPortListPortAdded(TAV_marlo_v1::PortList const&, Handle const& port) override
    {
        note("onPortListPortAdded", port->getName());
    }
    bool onPortListPortRemove(TAV_marlo_v1::PortList const&, Handle const& port) override
    {
        return ask("onPortListPortRemove", port->getName());
    }
    void onPortListPortRemoved(TAV_marlo_v1::PortList const&, Handle const& port) override
    {
        note("onPortListPortRemoved", port->getName());
    }
    bool onPortListPortMove(TAV_marlo_v1::PortList const&, unsigned from, unsigned to) override
    {
        return ask("onPortListPortMove", std::to_string(from) + " " + std::to_string(to));
    }
    void onPortListPortMoved(TAV_marlo_v1::PortList const&, unsigned from, unsigned to) override
    {
        note("onPortListPortMoved", std::to_string(from) + " " + std::to_string(to));
    }
    bool onPortSetDefaultValues(Handle const& port, TAV_marlo_v1::StringArray const& values) override
    {
        return ask("onPortSetDefaultValues", port->getName()) && PortNotification::onPortSetDefaultValues(port, values);
    }
    void onPortValuesChanged(Handle const& port, TAV_marlo_v1::StringArray const&) override
    {
        note("onPortValuesChanged", port->getName());
    }
    void onPortValuesReset(Handle const& port) override { note("onPortValuesReset", port->getName()); }
    bool onPortSetName(Handle const& port, char const* name) override
    {
        return ask("onPortSetName", std::string(port->getName()) + " " + name);
    }
    void onPortNameChanged(Handle const& port, char const*) override { note("onPortNameChanged", port->getName()); }
    void onPortExposureChanged(Handle const& port, bool on) override
    {
        note("onPortExposureChanged", port->getName() + std::string(on ? " on" : " off"));
    }
    void onPortFanInStateChanged(Handle const& port, bool on) override
    {
        note("onPortFanInStateChanged", port->getName() + std::string(on ? " on" : " off"));
    }
    bool onPortCanSetFlag(Handle const& port, TAV_marlo_v1::PortFlags flag) const override
    {
        return const_cast<RecordingOwner*>(this)->ask("onPortCanSetFlag",
                                                      port->getName() + (" " + std::to_string(flag)));
    }
    bool onPortCanClearFlag(Handle const& port, TAV_marlo_v1::PortFlags flag) const override
    {
        return const_cast<RecordingOwner*>(this)->ask("onPortCanClearFlag",
                                                      port->getName() + (" " + std::to_string(flag)));
    }
    void onPortSetFlag(Handle const& port, TAV_marlo_v1::PortFlags flag) override
    {
        note("onPortSetFlag", port->getName() + (" " + std::to_string(flag)));
    }
    void onPortClearFlag(Handle const& port, TAV_marlo_v1::PortFlags flag) override
    {
        note("onPortClearFlag", port->getName() + (" " + std::to_string(flag)));
    }

private:
    static std::string named(Handle const& port, Handle const& other)
    {
        return std::string(port->getName()) + " " + other->getName();
    }
    void note(std::string const& hook, std::string const& what) { m_calls.push_back(hook + " " + what); }
    bool ask(std::string const& hook, std::string const& what)
    {
        note(hook, what);
        return m_refused.count(hook) == 0;
    }

    std::set<std::string> m_refused;
    Calls m_calls;
};
