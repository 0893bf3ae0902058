#pragma once

#include <tav/AddRefWrapper.h>
#include <tav/ReferenceCounted.h>
#include <tav/String.h>
#include <tav/StringArray.h>
#include <tav/Types.h>

namespace TAV_marlo_v1 {

/// An ordered list of messages, each with a subject, a text and a kind. In every query
/// eAnyMessage stands for all kinds.
class TAV_API ErrorState : public ReferenceCounted {
public:
    static AddRefWrapper<ErrorState> createNew();
    ErrorState();
    ErrorState(ErrorState const& other);
    ErrorState& operator=(ErrorState const& other);

protected:
    ~ErrorState() override;

public:
    virtual bool hasMessage(MessageType type) const;
    virtual unsigned getMessageCount(MessageType type) const;
    /// Appends the subject and the text of each matching message, in order, to `out`.
    virtual void getMessages(MessageType type, StringArray& out) const;
    /// Appends a message; null texts count as empty. No duplicate check.
    virtual void addMessage(char const* subject, char const* text, MessageType type);
    /// @return whether at least one message was removed
    virtual bool clearMessages(MessageType type);

    /// The matching messages as lines " - subject: text", wrapped between words at 100 characters
    /// with three spaces in front of what follows; no line feed at the end.
    String getMessagesAsString(MessageType type) const;

private:
    struct Impl;
    Impl* m_impl; // never null
};

} // namespace TAV_marlo_v1
