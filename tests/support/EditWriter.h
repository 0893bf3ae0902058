#pragma once

#include "EditCompletion.h"
#include "EditTable.h"

#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace tav_test {

/// Writes edits that the graph has a place for, as lines of a script.
class EditWriter {
public:
    /// @param choose answers a number below the one it is given
    EditWriter(TAV_marlo_v1::kit::Document const& document, std::function<std::size_t(std::size_t)> choose)
        : m_document(document)
        , m_choose(std::move(choose))
    {
    }

    /// One of these edits, with words that may stand behind it.
    std::string next(std::vector<tool::Edit> const& edits)
    {
        tool::Edit const& edit = edits[m_choose(edits.size())];
        std::string line = edit.name();
        for (std::size_t i = 0; tool::EditSlot const* const slot = edit.slotAt(i); ++i) {
            bool const isNumber = slot->name == "N" || slot->name == "INDEX";
            line += ' ';
            line += isNumber ? std::to_string(m_choose(4)) : word(line, *slot);
            if (isWhole(edit, i + 1) && m_choose(3) == 0)
                break;
        }
        return line;
    }

private:
    static bool isWhole(tool::Edit const& edit, std::size_t count)
    {
        try {
            tool::Words words;
            for (std::size_t i = 0; i < count; ++i)
                words.push_back(edit.slotAt(i)->fixed.empty() ? "x" : edit.slotAt(i)->fixed[0]);
            edit.check(words);
            return true;
        } catch (tool::EditError const&) {
            return false;
        }
    }

    /// A word that may stand there, by way of compounds if it is a path; a name of few where any may stand.
    std::string word(std::string const& line, tool::EditSlot const& slot)
    {
        static char const* const names[] = {"x", "p", "n1", "k", "1", "b", "{1,2}"};
        std::string typed = slot.name == "NODE" && m_choose(2) == 0 ? "/" : "";
        for (;;) {
            tool::Words const found = tool::completionsOf(m_document, line + typed).words;
            if (found.empty())
                return typed.empty() ? names[m_choose(std::size(names))] : typed;
            std::string const chosen = found[m_choose(found.size())];
            bool const goesOn = chosen.back() == '.' || (chosen.back() == '/' && m_choose(8) != 0);
            if (!goesOn || typed == chosen)
                return chosen;
            typed = chosen;
        }
    }

    TAV_marlo_v1::kit::Document const& m_document;
    std::function<std::size_t(std::size_t)> m_choose;
};

} // namespace tav_test
