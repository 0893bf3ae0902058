#include "foundation/OrderedList.h"
#include "graph/FreeNames.h"
#include "graph/NamedList.h"

#include <tav/Port.h>

#include <gtest/gtest.h>

#include <random>
#include <set>

using namespace TAV_marlo_v1;
using detail::OrderedList;

namespace {

std::vector<Port*> contentsOf(OrderedList<Port> const& list)
{
    std::vector<Port*> contents;
    list.forEach([&](Port& port) { contents.push_back(&port); });
    return contents;
}

/// The list against a plain array through every size at which its inside changes form.
TEST(OrderedListAgainstArray, AgreesAfterEveryRandomChange)
{
    std::mt19937 random(7);
    auto const below = [&](std::size_t n) { return static_cast<unsigned>(random() % n); };
    std::vector<AddRefWrapper<Port>> objects;
    for (int i = 0; i < 3000; ++i)
        objects.push_back(Port::createNew("", eInput));
    OrderedList<Port> list;
    std::vector<Port*> model;
    for (int step = 0; step < 30000; ++step) {
        bool const growing = (step / 6000) % 2 == 0;
        unsigned const choice = below(10);
        if (model.empty() || choice < (growing ? 7u : 2u)) {
            unsigned const index = below(3) == 0 ? static_cast<unsigned>(model.size()) : below(model.size() + 1);
            Port* const object = objects[below(objects.size())].get(); // some stand in the list twice
            list.insert(index, object);
            model.insert(model.begin() + index, object);
        } else if (choice == 9) {
            unsigned const from = below(model.size());
            unsigned const to = below(model.size());
            list.move(from, to);
            Port* const object = model[from];
            model.erase(model.begin() + from);
            model.insert(model.begin() + to, object);
        } else {
            Port* const object = model[below(model.size())];
            EXPECT_EQ(list.take(object).get(), object);
            model.erase(std::find(model.begin(), model.end(), object));
        }
        ASSERT_EQ(list.size(), model.size());
        if (!model.empty()) {
            unsigned const index = below(model.size());
            ASSERT_EQ(list.at(index), model[index]);
            auto const first = std::find(model.begin(), model.end(), model[index]) - model.begin();
            ASSERT_EQ(list.indexOf(model[index]), static_cast<unsigned>(first));
        }
        if (step % 500 == 0) {
            ASSERT_EQ(contentsOf(list), model);
        }
    }
    ASSERT_EQ(contentsOf(list), model);
    for (unsigned i = 0; i < list.size(); ++i)
        ASSERT_EQ(list.at(i), model[i]) << "walking by index";
    while (AddRefWrapper<Port> const last = list.takeLast()) {
        ASSERT_EQ(last.get(), model.back());
        model.pop_back();
    }
    EXPECT_TRUE(model.empty());
    for (AddRefWrapper<Port> const& object : objects)
        ASSERT_EQ(object->refCount(), 1u);
}

/// Free names against trying one after the other, while names come and go at random.
TEST(FreeNamesAgainstTrying, GivesTheFirstFreeNumber)
{
    std::mt19937 random(11);
    detail::FreeNames names;
    std::set<std::string> taken;
    auto const isTaken = [&](std::string_view name) { return taken.count(std::string(name)) != 0; };
    for (int step = 0; step < 20000; ++step) {
        std::string const name = (random() % 2 ? "n" : "m2m") + std::to_string(random() % 60);
        if (taken.insert(name).second) {
            names.add(name);
        } else if (random() % 3 == 0) {
            taken.erase(name);
            names.remove(name);
        } else {
            unsigned number = static_cast<unsigned>(std::stoul(name.substr(name.find_last_not_of("0123456789") + 1)));
            std::string const stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
            while (isTaken(stem + std::to_string(++number))) {
            }
            ASSERT_EQ(names.next(name, isTaken), stem + std::to_string(number));
        }
    }
}

TEST(FreeNamesAtTheEdges, FollowTheRuleOfCountingUp)
{
    std::set<std::string> taken;
    detail::FreeNames names;
    for (char const* name : {"node", "node1", "node3", "007", "8", "x2147483647", "x2147483648", "y99999999999", ""}) {
        taken.insert(name);
        names.add(name);
    }
    auto const isTaken = [&](std::string_view name) { return taken.count(std::string(name)) != 0; };
    for (auto const& [name, next] : {std::pair{"node", "node2"},
                                     {"node3", "node4"},
                                     {"007", "9"},
                                     {"8", "9"},
                                     {"x2147483647", "x2147483648_1"},
                                     {"y99999999999", "y99999999999_1"},
                                     {"", "1"}})
        EXPECT_EQ(names.next(name, isTaken), next) << name;
}

/// A list long enough for an index, with names that stand several times, against looking through it.
TEST(NamedListAgainstScanning, FindsTheFirstOfANameThroughEveryChange)
{
    std::mt19937 random(3);
    auto const below = [&](std::size_t n) { return static_cast<unsigned>(random() % n); };
    auto const anyName = [&] { return "p" + std::to_string(below(40)); };
    detail::NamedList<Port> list;
    list.setHearsRenames(true);
    for (int step = 0; step < 20000; ++step) {
        unsigned const size = list.size();
        unsigned const choice = below(10);
        if (size < 20 || (choice < 4 && size < 200))
            list.insert(below(size + 1), Port::createNew(anyName().c_str(), eInput).get());
        else if (choice < 7)
            list.take(list.at(below(size)));
        else if (choice < 9)
            list.rename(*list.at(below(size)), detail::SharedTextRef(anyName()));
        else
            list.move(below(size), below(size));
        std::string const name = anyName();
        Port const* first = nullptr;
        for (unsigned i = list.size(); i-- > 0;)
            first = list.at(i)->getName() == name ? list.at(i) : first;
        ASSERT_EQ(list.find(name), first) << name << " after step " << step;
    }
}

TEST(NamedListNames, AFreeNameIsFreeAndMayBeItsOwn)
{
    detail::NamedList<Port> list;
    list.setHearsRenames(true);
    std::vector<AddRefWrapper<Port>> ports;
    for (int i = 0; i < 50; ++i) {
        ports.push_back(Port::createNew(("p" + std::to_string(i)).c_str(), eInput));
        list.insert(list.size(), ports.back().get());
    }
    list.rename(*ports[7], detail::SharedTextRef("q"));
    EXPECT_EQ(list.freeName("p7"), "p7");
    EXPECT_EQ(list.freeName("p8"), "p50");
    EXPECT_EQ(list.freeName("p8", ports[8].get()), "p8") << "its own name is free to the one who bears it";
}

} // namespace
