#pragma once

#include "foundation/NamedAccess.h"
#include "foundation/OrderedList.h"
#include "foundation/SharedText.h"
#include "graph/FreeNames.h"

#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <unordered_map>

namespace TAV_marlo_v1::detail {

/// An OrderedList of named objects with look-up by name.
///
/// A list that hears of every renaming of its objects (`renamed`) indexes the names once it has grown
/// beyond a few; any other compares them one by one. Where a name stands twice, the first in order counts.
template <class T>
class NamedList {
public:
    unsigned size() const noexcept { return m_items.size(); }
    bool empty() const noexcept { return m_items.empty(); }
    T* at(unsigned index) const noexcept { return index < size() ? m_items.at(index) : nullptr; }
    unsigned indexOf(T const* object) const noexcept { return m_items.indexOf(object); }
    bool contains(T const* object) const noexcept { return m_items.contains(object); }

    /// Whether every renaming of an object in the list is reported; an index is kept only then.
    bool hearsRenames() const noexcept { return m_hearsRenames; }
    void setHearsRenames(bool hears) noexcept
    {
        m_hearsRenames = hears;
        if (!hears)
            dropIndexes();
    }

    T* find(std::string_view name) const
    {
        if (m_hearsRenames && size() > kIndexFrom)
            return findIndexed(name);
        T* found = nullptr;
        for (unsigned i = 0; i < size() && !found; ++i) {
            T* const object = m_items.at(i);
            if (textOf(*object).view() == name)
                found = object;
        }
        return found;
    }

    bool hasName(std::string_view name) const { return find(name) != nullptr; }

    /// Whether a name here may be more than one step of a path, or none: it holds "/" or ".", or is empty.
    bool mayHoldSeparators() const noexcept { return m_mayHoldSeparators; }

    /// `name` itself when it is free, otherwise the next free name. `mine` may keep its own name.
    std::string freeName(std::string_view name, T const* mine = nullptr) const
    {
        T const* const holder = find(name);
        if (!holder || holder == mine)
            return std::string(name);
        if (!m_freeNames) {
            auto freeNames = std::make_unique<FreeNames>();
            m_items.forEach([&](T& object) { freeNames->add(textOf(object).view()); });
            if (m_hearsRenames)
                m_freeNames = std::move(freeNames);
            else
                return freeNames->next(name, [this](std::string_view text) { return hasName(text); });
        }
        return m_freeNames->next(name, [this](std::string_view text) { return hasName(text); });
    }

    void insert(unsigned index, T* object)
    {
        SharedText const& name = textOf(*object);
        lookForSeparators(name.view());
        if (m_index)
            m_index->emplace(&name, object);
        try {
            if (m_freeNames)
                m_freeNames->add(name.view());
            m_items.insert(index, object);
        } catch (...) {
            m_freeNames.reset();
            if (m_index)
                eraseFromIndex(name, object);
            throw;
        }
    }

    AddRefWrapper<T> take(T const* object) noexcept
    {
        AddRefWrapper<T> taken = m_items.take(object);
        if (taken)
            forgetName(textOf(*object), object);
        return taken;
    }

    AddRefWrapper<T> takeLast() noexcept
    {
        AddRefWrapper<T> taken = m_items.takeLast();
        if (taken)
            forgetName(textOf(*taken), taken.get());
        return taken;
    }

    void move(unsigned from, unsigned to) { m_items.move(from, to); }
    void reorder(std::vector<T*> const& order) { m_items.reorder(order); }

    /// Gives an object of this list another name; all or nothing.
    void rename(T& object, SharedTextRef const& name)
    {
        SharedTextRef const old(textOf(object));
        lookForSeparators(name.view());
        if (m_index)
            m_index->emplace(name.get(), &object);
        if (m_freeNames) {
            try {
                m_freeNames->add(name.view());
            } catch (...) {
                m_freeNames.reset(); // made anew when it is wanted
            }
        }
        NamedAccess::setText(object, name);
        forgetName(*old.get(), &object);
    }

    /// The object was renamed through another list that it stands in; the look-up by name starts anew.
    void renamedElsewhere() noexcept
    {
        dropIndexes();
        m_mayHoldSeparators = true;
    }

    void clear() noexcept
    {
        dropIndexes();
        m_items.clear();
        m_mayHoldSeparators = false;
    }

    void swap(NamedList& other) noexcept
    {
        m_items.swap(other.m_items);
        m_index.swap(other.m_index);
        m_freeNames.swap(other.m_freeNames);
        std::swap(m_hearsRenames, other.m_hearsRenames);
        std::swap(m_mayHoldSeparators, other.m_mayHoldSeparators);
    }

    template <class Visit>
    void forEach(Visit&& visit) const
    {
        m_items.forEach(std::forward<Visit>(visit));
    }

private:
    static constexpr unsigned kIndexFrom = 12;

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(SharedText const* text) const { return text->hash(); }
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(SharedText const* a, SharedText const* b) const noexcept { return a == b; }
        bool operator()(std::string_view a, SharedText const* b) const noexcept { return a == b->view(); }
        bool operator()(SharedText const* a, std::string_view b) const noexcept { return a->view() == b; }
    };
    using Index = std::unordered_multimap<SharedText const*, T*, Hash, Equal>;

    /// Once seen, it is taken to be there for good: only a look-up by path gets a little dearer.
    void lookForSeparators(std::string_view name) noexcept
    {
        if (!m_mayHoldSeparators)
            m_mayHoldSeparators = name.empty() || name.find_first_of("/.") != name.npos;
    }

    static SharedText const& textOf(T const& object) { return NamedAccess::text(object); }

    T* findIndexed(std::string_view name) const
    {
        if (!m_index) {
            auto index = std::make_unique<Index>();
            index->reserve(size());
            m_items.forEach([&](T& object) { index->emplace(&textOf(object), &object); });
            m_index = std::move(index);
        }
        auto const range = m_index->equal_range(name);
        if (range.first == range.second)
            return nullptr;
        T* first = range.first->second;
        if (std::next(range.first) == range.second)
            return first;
        for (auto it = std::next(range.first); it != range.second; ++it) {
            if (m_items.indexOf(it->second) < m_items.indexOf(first))
                first = it->second;
        }
        return first;
    }

    void eraseFromIndex(SharedText const& name, T const* object) noexcept
    {
        auto const range = m_index->equal_range(&name);
        for (auto it = range.first; it != range.second; ++it) {
            if (it->second == object) {
                m_index->erase(it);
                return;
            }
        }
    }

    void forgetName(SharedText const& name, T const* object) noexcept
    {
        if (m_index)
            eraseFromIndex(name, object);
        if (!m_freeNames)
            return;
        try {
            if (!hasName(name.view()))
                m_freeNames->remove(name.view());
        } catch (...) {
            m_freeNames.reset(); // made anew when it is wanted
        }
    }

    void dropIndexes() noexcept
    {
        m_index.reset();
        m_freeNames.reset();
    }

    OrderedList<T> m_items;
    mutable std::unique_ptr<Index> m_index;
    mutable std::unique_ptr<FreeNames> m_freeNames;
    bool m_hearsRenames = false;
    bool m_mayHoldSeparators = false;
};

} // namespace TAV_marlo_v1::detail
