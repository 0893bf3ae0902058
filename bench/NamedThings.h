#pragma once

#include "Row.h"
#include "SampleGraph.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// What is timed of things that an owner holds by name: each step with every thing, in random order.
enum class Step { Add, Find, Rename, Remove };

/// A row about `row.size()` things at one owner; where these are few, about several such owners, so that
/// there is something to time. `Owner` has add, find, rename and remove by name, each of which says
/// whether it was done, and size().
template <class Owner>
void timeStep(Row& row, Step step)
{
    std::vector<std::string> const names = sampleNames(row.size(), "thing");
    std::vector<std::string> const otherNames = sampleNames(row.size(), "other");
    std::vector<unsigned> const order = shuffled(row.size());
    unsigned const owners = std::max(1u, 1000 / row.size());
    while (row.next()) {
        std::vector<std::unique_ptr<Owner>> all;
        for (unsigned i = 0; i < owners; ++i)
            all.push_back(std::make_unique<Owner>());
        unsigned done = 0;
        auto const forAll = [&](auto const& act) {
            for (auto const& owner : all) {
                for (unsigned i = 0; i < row.size(); ++i)
                    done += act(*owner, i) ? 1 : 0;
            }
        };
        auto const add = [&](Owner& owner, unsigned i) { return owner.add(names[i].c_str()); };
        if (step != Step::Add)
            forAll(add);
        std::uint64_t const items = std::uint64_t{owners} * row.size();
        unsigned const doneBefore = done;
        row.time(items, [&] {
            switch (step) {
            case Step::Add:
                forAll(add);
                break;
            case Step::Find:
                forAll([&](Owner& owner, unsigned i) { return owner.find(names[order[i]].c_str()); });
                break;
            case Step::Rename:
                forAll([&](Owner& owner, unsigned i) {
                    return owner.rename(names[order[i]].c_str(), otherNames[i].c_str());
                });
                break;
            case Step::Remove:
                forAll([&](Owner& owner, unsigned i) { return owner.remove(names[order[i]].c_str()); });
                break;
            }
        });
        row.require(done - doneBefore == items, "every step is done");
        row.require(all.back()->size() == (step == Step::Remove ? 0 : row.size()), "the owner holds what it should");
        row.require(step != Step::Rename || all.back()->find(otherNames[0].c_str()), "the new name is found");
    }
}

} // namespace bench
