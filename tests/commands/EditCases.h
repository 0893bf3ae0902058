#pragma once

#include "support/EditableGraph.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

namespace tav_test {

/// A recorded command of any class.
struct Edit {
    std::function<bool()> doit;
    std::function<bool()> undo;
    std::function<bool()> redo;
};

template <class Command>
Edit editOf(Command&& command)
{
    auto const kept = std::make_shared<std::decay_t<Command>>(std::move(command));
    Edit edit;
    edit.doit = [kept] { return kept->doit(); };
    edit.redo = [kept] { return kept->redo(); };
    edit.undo = [kept] {
        if constexpr (std::is_void_v<decltype(kept->undo())>) {
            kept->undo();
            return true;
        } else {
            return kept->undo();
        }
    };
    return edit;
}

/// One way to use one command on an EditableGraph.
struct EditCase {
    std::string name;
    std::function<Edit(EditableGraph&)> record;
};

inline void PrintTo(EditCase const& editCase, std::ostream* out)
{
    *out << editCase.name;
}

/// For a test that has the case as its parameter.
template <class Info>
std::string testNameOf(Info const& info)
{
    std::string name = info.param.name;
    for (char& c : name) {
        bool const isPlain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        c = isPlain ? c : '_';
    }
    return name;
}

/// Every command, with every kind of target.
std::vector<EditCase> const& editCases();

} // namespace tav_test
