#pragma once

#include "foundation/NamedAccess.h"
#include "foundation/OrderedList.h"
#include "foundation/ProbingTable.h"
#include "foundation/SharedText.h"
#include "graph/FreeNames.h"

#include <memory>
#include <new>
#include <string>
#include <string_view>

namespace TAV_marlo_v1::detail {

/// An OrderedList of named objects with look-up by name.
///
/// A list that hears of every renaming of its objects (`rename`) indexes the names once it has grown
/// beyond a few; any other compares them one by one. Where a name stands twice, the first in order counts.
template <class T>
class NamedList : OrderedList<T> {
    using Items = OrderedList<T>;

public:
    using Items::contains;
    using Items::empty;
    using Items::forEach;
    using Items::indexOf;
    using Items::size;

    std::size_t heapBytes() const noexcept
    {
        return Items::heapBytes() + (m_names ? sizeof *m_names + m_names->index.heapBytes() : 0);
    }

    T* at(unsigned index) const noexcept { return index < size() ? Items::at(index) : nullptr; }

    /// Whether every renaming of an object in the list is reported; an index is kept only then.
    bool hearsRenames() const noexcept { return m_hearsRenames; }
    void setHearsRenames(bool hears) noexcept
    {
        m_hearsRenames = hears;
        if (!hears)
            m_names.reset();
    }

    T* find(std::string_view name) const
    {
        if (m_hearsRenames && size() > kIndexFrom)
            return namesForFinding().find(name);
        T* found = nullptr;
        for (unsigned i = 0; i < size() && !found; ++i) {
            T* const object = Items::at(i);
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
        auto const isTaken = [this](std::string_view text) { return hasName(text); };
        if (m_hearsRenames && m_names && m_names->numbers)
            return m_names->numbers->next(name, isTaken);
        auto numbers = std::make_unique<FreeNames>();
        forEach([&](T& object) { numbers->add(textOf(object).view()); });
        std::string next = numbers->next(name, isTaken);
        if (m_hearsRenames)
            names().numbers = std::move(numbers);
        return next;
    }

    void insert(unsigned index, T* object)
    {
        lookForSeparators(textOf(*object).view());
        Items::insert(index, object);
        noteName(*object);
    }

    AddRefWrapper<T> take(T const* object) noexcept
    {
        AddRefWrapper<T> taken = Items::take(object);
        if (taken)
            forgetName(textOf(*object), object);
        return taken;
    }

    AddRefWrapper<T> takeLast() noexcept
    {
        AddRefWrapper<T> taken = Items::takeLast();
        if (taken)
            forgetName(textOf(*taken), taken.get());
        return taken;
    }

    void move(unsigned from, unsigned to)
    {
        Items::move(from, to);
        orderChanged();
    }

    void reorder(std::vector<T*> const& order)
    {
        Items::reorder(order);
        orderChanged();
    }

    /// Gives an object of this list another name; all or nothing.
    void rename(T& object, SharedTextRef const& name)
    {
        SharedTextRef const old(textOf(object));
        lookForSeparators(name.view());
        NamedAccess::setText(object, name);
        forgetName(*old, &object);
        noteName(object);
    }

    /// The object was renamed through another list that it stands in; the look-up by name starts anew.
    void renamedElsewhere() noexcept
    {
        m_names.reset();
        m_mayHoldSeparators = true;
    }

    void clear() noexcept
    {
        m_names.reset();
        m_mayHoldSeparators = false;
        Items::clear();
    }

    void swap(NamedList& other) noexcept
    {
        Items::swap(other);
        m_names.swap(other.m_names);
        std::swap(m_hearsRenames, other.m_hearsRenames);
        std::swap(m_mayHoldSeparators, other.m_mayHoldSeparators);
    }

private:
    static constexpr unsigned kIndexFrom = 12;

    /// What a list that has grown knows of its names, each part made when it is first asked for.
    struct Names {
        struct Entry {
            T* object = nullptr;
            SharedText const* text = nullptr; // its name, so that a look-up need not go through the object
            std::uint32_t nameHash = 0;
            bool isFree() const noexcept { return !object; }
            std::uint32_t hash() const noexcept { return nameHash; }
        };
        ProbingTable<Entry> index; // one entry a name, the first object that bears it
        std::unique_ptr<FreeNames> numbers;
        unsigned repeats = 0; // objects that one before them keeps out of the index
        bool isIndexed = false;

        T* find(std::string_view name) const noexcept
        {
            T* found = nullptr;
            std::uint32_t const hash = SharedText::hashOf(name);
            index.search(hash, [&](Entry const& entry) {
                if (entry.nameHash == hash && entry.text->view() == name)
                    found = entry.object;
                return found != nullptr;
            });
            return found;
        }

        void dropIndex() noexcept
        {
            index = {};
            repeats = 0;
            isIndexed = false;
        }
    };

    /// Once seen, it is taken to be there for good: only a look-up by path gets a little dearer.
    void lookForSeparators(std::string_view name) noexcept
    {
        for (char const c : name)
            m_mayHoldSeparators = m_mayHoldSeparators || c == '/' || c == '.';
        m_mayHoldSeparators = m_mayHoldSeparators || name.empty();
    }

    static SharedText const& textOf(T const& object) { return NamedAccess::text(object); }

    Names& names() const
    {
        if (!m_names)
            m_names = std::make_unique<Names>();
        return *m_names;
    }

    Names const& namesForFinding() const
    {
        Names& found = names();
        if (found.isIndexed)
            return found;
        found.index.reserve(size());
        forEach([&](T& object) { enter(object); });
        found.isIndexed = true;
        return found;
    }

    /// Enters an object of the list under its name, which an object before it may bear too.
    void enter(T& object) const
    {
        SharedText const& name = textOf(object);
        bool known = false;
        m_names->index.search(name.hash(), [&](typename Names::Entry& entry) {
            known = entry.text == &name;
            if (known && m_names->isIndexed && indexOf(&object) < indexOf(entry.object))
                entry.object = &object;
            return known;
        });
        if (known)
            ++m_names->repeats;
        else
            m_names->index.insert({&object, &name, name.hash()});
    }

    /// The object bears its name from now on, or is in the list from now on.
    void noteName(T& object) noexcept
    {
        if (!m_names)
            return;
        try {
            if (m_names->isIndexed)
                enter(object);
            if (m_names->numbers)
                m_names->numbers->add(textOf(object).view());
        } catch (std::bad_alloc const&) {
            m_names.reset(); // made anew when it is wanted
        }
    }

    /// The object does not bear the name any more, or is not in the list any more.
    void forgetName(SharedText const& name, T const* object) noexcept
    {
        if (!m_names)
            return;
        try {
            if (m_names->isIndexed) {
                bool const wasEntered =
                    m_names->index.erase(name.hash(), [&](auto const& entry) { return entry.object == object; });
                if (!wasEntered)
                    --m_names->repeats;
                else if (m_names->repeats > 0)
                    enterNextOf(name);
            }
            if (m_names->numbers && !hasName(name.view()))
                m_names->numbers->remove(name.view());
        } catch (std::bad_alloc const&) {
            m_names.reset();
        }
    }

    void enterNextOf(SharedText const& name)
    {
        for (unsigned i = 0; i < size(); ++i) {
            T* const object = Items::at(i);
            if (&textOf(*object) != &name)
                continue;
            m_names->index.insert({object, &name, name.hash()});
            --m_names->repeats;
            return;
        }
    }

    /// Of objects of one name another one may be the first now.
    void orderChanged() noexcept
    {
        if (m_names && m_names->repeats > 0)
            m_names->dropIndex();
    }

    bool m_hearsRenames = false;
    bool m_mayHoldSeparators = false;
    mutable std::unique_ptr<Names> m_names; // made when a name is first looked for
};

} // namespace TAV_marlo_v1::detail
