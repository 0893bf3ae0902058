#pragma once

namespace TAV_marlo_v1::detail {

/// Deletes objects that own others of their kind one after another instead of one inside the other, so
/// that the depth of a graph never becomes depth of the stack.
///
/// Use: `deleteThis()` of the class hands itself over. While one object is being deleted, others that
/// die with it only queue up. `Link` leads to the pointer in the object that chains the queue.
template <class T, T*& (*Link)(T&)>
class Graveyard {
public:
    template <class Delete>
    void bury(T& object, Delete&& remove)
    {
        Link(object) = m_first;
        m_first = &object;
        if (m_burying)
            return;
        m_burying = true;
        while (m_first) {
            T* const next = m_first;
            m_first = Link(*next);
            remove(next);
        }
        m_burying = false;
    }

private:
    T* m_first = nullptr;
    bool m_burying = false;
};

} // namespace TAV_marlo_v1::detail
