#pragma once

#include <tav/ChangeBracketClient.h>
#include <tav/Metadata.h>
#include <tav/ReferenceCounted.h>
#include <tav/StringArray.h>

namespace TAV_marlo_v1 {

/// A probe on a port that records the values flowing through it. This base class records nothing;
/// an evaluation back end derives from it. Every `bool` answer says whether there is something to
/// report; what fills an array appends to it.
class TAV_API WatchPoint : public ReferenceCounted, public ChangeBracketClient, public Metadata {
public:
    static AddRefWrapper<WatchPoint> createNew();
    WatchPoint();

protected:
    ~WatchPoint() override;

public:
    virtual void enable(bool on);
    virtual bool enabled() const;
    virtual bool getAvailableParameters(StringArray& names) const;
    virtual bool getParameterAcceptableValues(char const* name, StringArray& values) const;
    virtual bool getParameterDescription(char const* name, String& text) const;
    virtual bool getParameterValue(char const* name, String& value) const;
    virtual bool getParameterValueDescription(char const* name, char const* value, String& text) const;
    virtual bool getRecordedParameters(StringArray& names) const;
    virtual bool getRecordedValues(char const* name, StringArray& values) const;
    virtual bool setParameterValue(char const* name, char const* value);

protected:
    void executeChange() override;
};

} // namespace TAV_marlo_v1
