#pragma once

#include <tav/ErrorState.h>

namespace TAV_marlo_v1 {

class Node;

/// The messages of one node. A change is reported (eNodeMessagesChanged) for the node and then for
/// the node of each enclosing compound, up to the top. It may outlive its node; then it reports
/// nothing.
class TAV_API NodeErrorState final : public ErrorState {
public:
    explicit NodeErrorState(Node* node);

    void addMessage(char const* subject, char const* text, MessageType type) override;
    bool clearMessages(MessageType type) override;

    /// The node died or got another error state.
    void forgetNode() noexcept { m_node = nullptr; }

protected:
    ~NodeErrorState() override;

private:
    Node* m_node; // not owned; null once the node is gone
};

} // namespace TAV_marlo_v1
