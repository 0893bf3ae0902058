#include "foundation/SharedText.h"

#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace TAV_marlo_v1::detail {

/// The block of the empty text. Constant-initialised, so that names made before this file's own
/// initialisation can hold it.
struct EmptyText {
    constexpr EmptyText() noexcept
        : header(0, 0)
    {
    }
    SharedText header;
    char terminator = '\0';
};

namespace {
constinit EmptyText theEmptyText;
static_assert(offsetof(EmptyText, terminator) == sizeof(SharedText)); // where chars() looks
} // namespace

/// All texts that somebody holds: chains that run through the texts themselves, so that a text costs
/// the pool one bucket and no allocation of its own.
class SharedTextPool {
public:
    // Leaked on purpose: static objects of any module may give up their names later than this one's.
    static SharedTextPool& instance()
    {
        static SharedTextPool* const pool = new SharedTextPool;
        return *pool;
    }

    SharedText const* find(std::string_view text, std::size_t hash) const noexcept
    {
        for (SharedText const* entry = m_buckets[hash & m_mask]; entry; entry = entry->m_next) {
            if (entry->m_hash == hash && entry->view() == text)
                return entry;
        }
        return nullptr;
    }

    SharedText const& add(std::string_view text, std::size_t hash)
    {
        if (text.size() >= std::numeric_limits<std::uint32_t>::max())
            throw std::bad_alloc();
        if (m_count > m_mask)
            growTo((m_mask + 1) * 2);
        SharedText* const entry = create(text, hash);
        link(m_buckets.get(), m_mask, *entry);
        ++m_count;
        return *entry;
    }

    void remove(SharedText const& text) noexcept
    {
        SharedText** place = &m_buckets[text.m_hash & m_mask];
        while (*place != &text)
            place = &(*place)->m_next;
        *place = text.m_next;
        --m_count;
        destroy(text);
        if (m_mask >= kFewestBuckets && m_count < m_mask / 8)
            tryToShrink();
    }

private:
    using Buckets = std::unique_ptr<SharedText*[]>;
    static constexpr std::size_t kFewestBuckets = 1024;

    SharedTextPool()
        : m_buckets(new SharedText*[kFewestBuckets]())
        , m_mask(kFewestBuckets - 1)
    {
    }

    static SharedText* create(std::string_view text, std::size_t hash)
    {
        void* const block = ::operator new(sizeof(SharedText) + text.size() + 1);
        auto* const entry = new (block) SharedText(hash, static_cast<std::uint32_t>(text.size()));
        char* const chars = static_cast<char*>(block) + sizeof(SharedText);
        std::memcpy(chars, text.data(), text.size());
        chars[text.size()] = '\0';
        return entry;
    }

    static void destroy(SharedText const& text) noexcept
    {
        SharedText* const block = const_cast<SharedText*>(&text);
        block->~SharedText();
        ::operator delete(static_cast<void*>(block));
    }

    static void link(SharedText** buckets, std::size_t mask, SharedText& entry) noexcept
    {
        SharedText*& bucket = buckets[entry.m_hash & mask];
        entry.m_next = bucket;
        bucket = &entry;
    }

    void growTo(std::size_t count) { rehash(Buckets(new SharedText*[count]()), count); }

    // A pool that finds no memory for a smaller table keeps the large one.
    void tryToShrink() noexcept
    {
        std::size_t const count = (m_mask + 1) / 4;
        if (Buckets buckets{new (std::nothrow) SharedText*[count]()})
            rehash(std::move(buckets), count);
    }

    void rehash(Buckets buckets, std::size_t count) noexcept
    {
        for (std::size_t i = 0; i <= m_mask; ++i) {
            for (SharedText* entry = m_buckets[i]; entry;) {
                SharedText* const next = entry->m_next;
                link(buckets.get(), count - 1, *entry);
                entry = next;
            }
        }
        m_buckets = std::move(buckets);
        m_mask = count - 1;
    }

    Buckets m_buckets;
    std::size_t m_mask; // number of buckets, a power of two, less one
    std::size_t m_count = 0;
};

SharedText const& SharedText::intern(std::string_view text)
{
    if (text.empty()) {
        theEmptyText.header.addRef();
        return theEmptyText.header;
    }
    SharedTextPool& pool = SharedTextPool::instance();
    std::size_t const hash = std::hash<std::string_view>()(text);
    SharedText const* const known = pool.find(text, hash);
    if (!known)
        return pool.add(text, hash);
    known->addRef();
    return *known;
}

SharedText const* SharedText::find(std::string_view text) noexcept
{
    if (text.empty())
        return &theEmptyText.header;
    return SharedTextPool::instance().find(text, std::hash<std::string_view>()(text));
}

SharedText const& SharedText::empty() noexcept
{
    return theEmptyText.header;
}

void SharedText::discard() const noexcept
{
    // The count of the empty text starts at 1 for its own sake, but whoever takes the permanent text
    // without counting may release it once too often.
    if (m_size == 0) {
        m_references = 1;
        return;
    }
    SharedTextPool::instance().remove(*this);
}

} // namespace TAV_marlo_v1::detail
