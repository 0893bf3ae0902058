// Many annotations in one compound.

#include "NamedThings.h"

#include <tav/AnnotationList.h>

namespace bench {

namespace {

class Annotations {
public:
    bool add(char const* name)
    {
        return bool(m_document.top().createCompoundAnnotation(TAV_marlo_v1::Annotation::eStickyNote, name));
    }
    bool find(char const* name) const { return bool(m_document.top().annotations()[name]); }
    bool rename(char const* name, char const* newName)
    {
        AddRefWrapper<TAV_marlo_v1::Annotation> const annotation = m_document.top().annotations()[name];
        annotation->setName(newName);
        return std::string(newName) == annotation->getName();
    }
    bool remove(char const* name) { return m_document.top().removeAnnotation(name); }
    unsigned size() const { return m_document.top().annotations().size(); }

private:
    SampleDocument m_document;
};

constexpr Sizes kSizes{1000, 100000};

RowEntry const addEntry(
    "annotations: add", [](Row& row) { timeStep<Annotations>(row, Step::Add); }, kSizes);
RowEntry const findEntry(
    "annotations: find", [](Row& row) { timeStep<Annotations>(row, Step::Find); }, kSizes);
RowEntry const renameEntry(
    "annotations: rename", [](Row& row) { timeStep<Annotations>(row, Step::Rename); }, kSizes);
RowEntry const removeEntry(
    "annotations: remove", [](Row& row) { timeStep<Annotations>(row, Step::Remove); }, kSizes);

} // namespace

} // namespace bench
