// A host at its smallest, up to its first usable graph. Prints the nanoseconds since main began.

#include <tav/tav.h>

#include <chrono>
#include <cstdio>

using namespace TAV_marlo_v1;

namespace {

class Document final : public Container {
public:
    char const* getName() const override { return "start"; }
    char const* getFilePath() const override { return ""; }
    void rebuildCompounds() override {}
    bool isReadOnly() const override { return false; }
    Runtime* getRuntime() const override { return nullptr; }
};

} // namespace

int main()
{
    auto const begin = std::chrono::steady_clock::now();
    Document document;
    AddRefWrapper<Node> const top = Node::createNew(&document, "top");
    AddRefWrapper<Compound> const compound = Compound::createNew(top, nullptr);
    document.setTopNode(top);
    bool const isUsable = compound->nodes().add(Node::createNew(&document, "node"));
    std::chrono::duration<double, std::nano> const taken = std::chrono::steady_clock::now() - begin;
    std::printf("%.0f\n", taken.count());
    return isUsable && document.findNodeFromPath("/node") ? 0 : 1;
}
