#include <tav/ErrorState.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

struct Message {
    std::string subject;
    std::string text;
    MessageType type;
};

bool matches(Message const& message, MessageType wanted)
{
    return wanted == eAnyMessage || message.type == wanted;
}

/// Appends " - subject: text" with its line feed, wrapped between words.
void appendMessage(std::string& out, Message const& message)
{
    constexpr std::size_t kLongestLine = 100;
    constexpr std::string_view kIndent = "   ";
    constexpr std::string_view kDelimiters = " \t";

    std::size_t const from = out.size();
    out.append(" - ").append(message.subject).append(": ");
    std::size_t lineLength = out.size() - from;

    std::string_view rest(message.text);
    for (;;) {
        rest.remove_prefix(std::min(rest.find_first_not_of(kDelimiters), rest.size()));
        if (rest.empty())
            break;
        std::string_view const word = rest.substr(0, rest.find_first_of(kDelimiters));
        rest.remove_prefix(word.size());
        if (lineLength + word.size() > kLongestLine) {
            out.back() = '\n'; // in place of the blank behind the last word
            out += kIndent;
            lineLength = kIndent.size();
        }
        out += word;
        out += ' ';
        lineLength += word.size() + 1;
    }
    out.back() = '\n';
}

} // namespace

struct ErrorState::Impl {
    std::vector<Message> messages;
};

AddRefWrapper<ErrorState> ErrorState::createNew()
{
    return AddRefWrapper<ErrorState>(new ErrorState);
}

ErrorState::ErrorState()
    : m_impl(new Impl)
{
}

ErrorState::ErrorState(ErrorState const& other)
    : ReferenceCounted(other)
    , m_impl(new Impl(*other.m_impl))
{
}

ErrorState& ErrorState::operator=(ErrorState const& other)
{
    std::vector<Message> messages(other.m_impl->messages);
    ReferenceCounted::operator=(other);
    m_impl->messages.swap(messages);
    return *this;
}

ErrorState::~ErrorState()
{
    delete m_impl;
}

bool ErrorState::hasMessage(MessageType type) const
{
    std::vector<Message> const& messages = m_impl->messages;
    return std::any_of(messages.begin(), messages.end(), [type](Message const& m) { return matches(m, type); });
}

unsigned ErrorState::getMessageCount(MessageType type) const
{
    std::vector<Message> const& messages = m_impl->messages;
    return static_cast<unsigned>(
        std::count_if(messages.begin(), messages.end(), [type](Message const& m) { return matches(m, type); }));
}

void ErrorState::getMessages(MessageType type, StringArray& out) const
{
    StringArray all(out);
    for (Message const& message : m_impl->messages) {
        if (matches(message, type)) {
            all.add(message.subject.c_str());
            all.add(message.text.c_str());
        }
    }
    out = std::move(all);
}

void ErrorState::addMessage(char const* subject, char const* text, MessageType type)
{
    m_impl->messages.push_back({subject ? subject : "", text ? text : "", type});
}

bool ErrorState::clearMessages(MessageType type)
{
    std::vector<Message>& messages = m_impl->messages;
    auto const kept =
        std::remove_if(messages.begin(), messages.end(), [type](Message const& m) { return matches(m, type); });
    bool const any = kept != messages.end();
    messages.erase(kept, messages.end());
    return any;
}

String ErrorState::getMessagesAsString(MessageType type) const
{
    std::string out;
    for (Message const& message : m_impl->messages) {
        if (matches(message, type))
            appendMessage(out, message);
    }
    if (!out.empty())
        out.pop_back(); // the last line feed
    return String(out.data(), out.size());
}

} // namespace TAV_marlo_v1
