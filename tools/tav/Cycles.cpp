#include "Cycles.h"

#include <algorithm>
#include <utility>

namespace tool {

namespace {

/// Tarjan's strongly connected components, with a stack of its own.
class Search {
public:
    explicit Search(Edges const& edges)
        : m_edges(edges)
        , m_marks(edges.size())
    {
    }

    std::vector<std::vector<unsigned>> run()
    {
        for (unsigned node = 0; node < m_edges.size(); ++node) {
            if (m_marks[node].order == 0)
                visitFrom(node);
        }
        return std::move(m_cycles);
    }

private:
    struct Mark {
        unsigned order = 0;  // 0: not visited
        unsigned lowest = 0; // the earliest node on the path that can be reached from here
        bool open = false;   // visited, and its component is not complete
    };
    struct Step {
        unsigned node;
        std::size_t nextEdge;
    };

    void enter(unsigned node)
    {
        m_marks[node] = {++m_count, m_count, true};
        m_open.push_back(node);
        m_path.push_back({node, 0});
    }

    void visitFrom(unsigned start)
    {
        enter(start);
        while (!m_path.empty()) {
            Step& step = m_path.back();
            unsigned const node = step.node;
            if (step.nextEdge == m_edges[node].size()) {
                leave(node);
                continue;
            }
            unsigned const next = m_edges[node][step.nextEdge++];
            if (m_marks[next].order == 0)
                enter(next);
            else if (m_marks[next].open)
                m_marks[node].lowest = std::min(m_marks[node].lowest, m_marks[next].order);
        }
    }

    void leave(unsigned node)
    {
        m_path.pop_back();
        if (!m_path.empty()) {
            unsigned& lowest = m_marks[m_path.back().node].lowest;
            lowest = std::min(lowest, m_marks[node].lowest);
        }
        if (m_marks[node].lowest == m_marks[node].order)
            closeComponent(node);
    }

    void closeComponent(unsigned first)
    {
        std::vector<unsigned> component;
        do {
            component.push_back(m_open.back());
            m_marks[m_open.back()].open = false;
            m_open.pop_back();
        } while (component.back() != first);
        std::vector<unsigned> const& next = m_edges[first];
        if (component.size() > 1 || std::find(next.begin(), next.end(), first) != next.end()) {
            std::sort(component.begin(), component.end());
            m_cycles.push_back(std::move(component));
        }
    }

    Edges const& m_edges;
    std::vector<Mark> m_marks;
    std::vector<unsigned> m_open;
    std::vector<Step> m_path;
    std::vector<std::vector<unsigned>> m_cycles;
    unsigned m_count = 0;
};

} // namespace

std::vector<std::vector<unsigned>> findCycles(Edges const& edges)
{
    return Search(edges).run();
}

} // namespace tool
