#pragma once

#include "persistence/ElementSource.h"

#include <tav/PropertyList.h>
#include <tav/StringArray.h>

#include <string>
#include <vector>

namespace TAV_marlo_v1 {

/// Reads the contents of a "metadatas" element in store form into a list. A handler begins it at the
/// start tag and then hands everything on while it is active.
class MetadataReader {
public:
    explicit MetadataReader(ElementSource& source)
        : m_source(source)
    {
    }

    /// Appends to `store`, which must stay where it is.
    void begin(PropertyList& store);
    bool isActive() const noexcept { return !m_states.empty(); }
    /// Leaves what is open where it is: the text is read from its beginning again.
    void abandon() noexcept;

    void startElement(std::string_view name, ElementAttributes const& attributes);
    void characters(std::string_view part);
    void endElement();

private:
    enum class State : unsigned char { Store, Entry, Value, Children, Child };

    bool enter(State state, std::string_view name, ElementAttributes const& attributes);
    void enterEntry(ElementAttributes const& attributes);
    void enterValue();
    void enterChild(ElementAttributes const& attributes);
    void leave(State state);

    ElementSource& m_source;
    std::vector<State> m_states;
    std::vector<PropertyList*> m_stores; // the one being read last
    unsigned m_skipDepth = 0;            // within an element that is not known
    std::string m_key;
    StringArray m_values; // of the open entry; moved away, and so empty, between entries
    std::string m_value;
};

} // namespace TAV_marlo_v1
