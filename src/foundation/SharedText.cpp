#include "foundation/SharedText.h"

#include "foundation/ProbingTable.h"
#include "foundation/SmallBlocks.h"

#include <cstddef>
#include <cstring>
#include <limits>
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

/// All texts that somebody holds. The table keeps the hashes beside the texts, so that finding out that a text is new,
/// which most names of a graph are, touches no other text.
class SharedTextPool {
public:
    // Leaked on purpose: static objects of any module may give up their names later than this one's.
    static SharedTextPool& instance()
    {
        static SharedTextPool* const pool = new SharedTextPool;
        return *pool;
    }

    SharedText const* find(std::string_view text, std::uint32_t hash) const noexcept
    {
        SharedText const* found = nullptr;
        m_table.search(hash, [&](Entry const& entry) {
            if (entry.textHash == hash && entry.text->view() == text)
                found = entry.text;
            return found != nullptr;
        });
        return found;
    }

    SharedText const& add(std::string_view text, std::uint32_t hash)
    {
        if (text.size() >= std::numeric_limits<std::uint32_t>::max())
            throw std::bad_alloc();
        m_table.reserveOneMore();
        SharedText const* const added = create(text, hash);
        m_table.insert({added, hash});
        return *added;
    }

    void remove(SharedText const& text) noexcept
    {
        m_table.erase(text.m_hash, [&](Entry const& entry) { return entry.text == &text; });
        m_table.shrink();
        destroy(text);
    }

private:
    struct Entry {
        SharedText const* text = nullptr;
        std::uint32_t textHash = 0;
        bool isFree() const noexcept { return !text; }
        std::uint32_t hash() const noexcept { return textHash; }
    };

    SharedTextPool() = default;

    static SharedText const* create(std::string_view text, std::uint32_t hash)
    {
        void* const block = takeBlock(sizeof(SharedText) + text.size() + 1);
        auto* const created = new (block) SharedText(hash, static_cast<std::uint32_t>(text.size()));
        char* const chars = static_cast<char*>(block) + sizeof(SharedText);
        std::memcpy(chars, text.data(), text.size());
        chars[text.size()] = '\0';
        return created;
    }

    static void destroy(SharedText const& text) noexcept
    {
        giveBlock(const_cast<SharedText*>(&text), sizeof(SharedText) + text.size() + 1);
    }

    ProbingTable<Entry> m_table;
};

SharedText const& SharedText::intern(std::string_view text)
{
    if (text.empty()) {
        theEmptyText.header.addRef();
        return theEmptyText.header;
    }
    SharedTextPool& pool = SharedTextPool::instance();
    std::uint32_t const hash = hashOf(text);
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
    return SharedTextPool::instance().find(text, hashOf(text));
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
