#pragma once

#include <tav/Annotation.h>
#include <tav/Compound.h>
#include <tav/HostEditor.h>
#include <tav/Node.h>
#include <tav/Port.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tav_test {

using Calls = std::vector<std::string>;

/// Writes down every call it gets as text: "nodePort valuesChanged in", "node added top n",
/// "connection added out in". Objects appear by their names, "-" for none.
class RecordingEditor : public TAV_marlo_v1::HostEditor {
    using Port = TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Port>;
    using Node = TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Node>;
    using Compound = TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Compound>;
    using Annotation = TAV_marlo_v1::AddRefWrapper<TAV_marlo_v1::Annotation>;

public:
    using HostEditor::peekNotifierRegisteredWithCount;

    RecordingEditor() = default;
    /// Writes into a list that it shares with others, each call behind the prefix.
    RecordingEditor(Calls& shared, char const* inFront)
        : prefix(inFront)
        , sharedCalls(&shared)
    {
    }

    Calls calls;
    std::string prefix;
    Calls* sharedCalls = nullptr;
    /// Run after each call was written down, with its text.
    std::function<void(std::string const&)> reaction;

    /// The calls so far, which are forgotten.
    Calls take() { return std::exchange(calls, {}); }

    void tav_onConnectionChange(TAV_marlo_v1::ECnxChangeType type, Port const& port, Port const& other) override
    {
        note("connection", kConnection[type], nameOf(port), nameOf(other));
    }
    void tav_onCompoundConnectionChange(TAV_marlo_v1::ECnxChangeType type, Port const& port, Port const& other) override
    {
        note("compoundConnection", kConnection[type], nameOf(port), nameOf(other));
    }
    void tav_onCompoundPortChange(TAV_marlo_v1::EPortChangeType type, Port const& port) override
    {
        note("compoundPort", kPort[type], nameOf(port));
    }
    void tav_onNodeChange(TAV_marlo_v1::ENodeChangeType type, Compound const& compound, Node const& node) override
    {
        note("node", kNode[type], nameOf(compound), nameOf(node));
    }
    void tav_onNodePortChange(TAV_marlo_v1::EPortChangeType type, Port const& port) override
    {
        note("nodePort", kPort[type], nameOf(port));
    }
    void tav_onAnnotationChange(TAV_marlo_v1::EAnnotationChangeType type, Compound const& compound,
                                Annotation const& annotation) override
    {
        note("annotation", kAnnotation[type], nameOf(compound), nameOf(annotation));
    }

private:
    // In the order of the enumerators.
    static constexpr char const* kConnection[] = {"added", "removed", "fanInAdded"};
    static constexpr char const* kPort[] = {"added",
                                            "removed",
                                            "moved",
                                            "renamed",
                                            "dataTypeChanged",
                                            "valuesChanged",
                                            "connected",
                                            "disconnected",
                                            "metadataChanged",
                                            "flagsChanged",
                                            "fanInChanged",
                                            "watchPointSet",
                                            "watchPointRemoved",
                                            "exposureChanged",
                                            "valuesReset"};
    static constexpr char const* kNode[] = {"added",        "removed",         "deleted",        "renamed",
                                            "stateChanged", "messagesChanged", "metadataChanged"};
    static constexpr char const* kAnnotation[] = {"added", "removed", "stateChanged", "renamed"};

    template <class T>
    static std::string nameOf(TAV_marlo_v1::AddRefWrapper<T> const& object)
    {
        return object ? object->getName() : "-";
    }

    template <class... Words>
    void note(char const* kind, char const* change, Words const&... words)
    {
        std::string call = prefix + kind + " " + change;
        ((call += " " + words), ...);
        (sharedCalls ? *sharedCalls : calls).push_back(call);
        if (auto const react = reaction) // a copy: the reaction may delete this editor
            react(call);
    }
};

} // namespace tav_test
