#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/Metadata.h>
#include <tav/Namable.h>
#include <tav/ReferenceCounted.h>
#include <tav/String.h>

#include <cstdint>

namespace TAV_marlo_v1 {

class Compound;

/// A backdrop or a sticky note on a compound's canvas. Its contents are metadata entries: "text",
/// "coords", "color", "format", and a backdrop's "title"; their value texts are the host's.
class TAV_API Annotation : public ReferenceCounted, public Namable, public Metadata {
public:
    enum AnnotationType : std::uint32_t { eBackdrop = 0, eStickyNote = 1 };

    /// Sets the name as it is, without asking the compound. A null compound makes a free annotation.
    static AddRefWrapper<Annotation> createNew(AnnotationType type, Compound* compound, char const* name);
    Annotation(AnnotationType type, Compound* compound, char const* name);

protected:
    ~Annotation() override;

public:
    AnnotationType getType() const noexcept { return m_type; }
    void setType(AnnotationType type);
    /// Not owned; null for a free annotation.
    Compound* getParentCompound() const noexcept { return m_compound; }
    /// For lists: neither asks nor tells.
    void setParentCompound(Compound* compound);

    /// Asks the compound, changes, tells it. A taken name becomes the next free one among the
    /// compound's annotations; a name that the runtime refuses, a null and the present name change nothing.
    void setName(char const* name) override;

    /// The first value of the entry, "" when there is none.
    String getAnnotationMetaDataValue(char const* key) const;
    bool setAnnotationMetaDataValue(char const* key, char const* value);

    /// Graph text rooted at "tavBackdrop" or "tavStickyNote".
    String saveToString() const;

    /// Called when the annotation has left its compound. The base class does nothing.
    virtual void onThisAnnotationDeleted();

protected:
    /// Tells the compound that the annotation's state changed.
    void onMetadataChanged() override;

private:
    Annotation(Annotation const&) = delete;
    Annotation& operator=(Annotation const&) = delete;

    friend class AnnotationAccess;
    AnnotationType m_type;
    bool m_isStray = false; // names a compound without standing in its list: the compound keeps a note of it
    Compound* m_compound = nullptr;
};

} // namespace TAV_marlo_v1
