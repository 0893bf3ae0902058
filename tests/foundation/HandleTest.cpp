#include <tav/AddRefWrapper.h>
#include <tav/Flaggable.h>
#include <tav/ReferenceCounted.h>
#include <tav/Types.h>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace TAV_marlo_v1 {

namespace {

/// Writes down its end, and can hand itself back to an owner instead of ending.
class Counted : public ReferenceCounted {
public:
    explicit Counted(int& ended, std::vector<Counted*>* pool = nullptr)
        : m_ended(&ended)
        , m_pool(pool)
    {
    }
    ~Counted() override { ++*m_ended; }
    void deleteThis() override
    {
        if (m_pool)
            m_pool->push_back(this);
        else
            ReferenceCounted::deleteThis();
    }

private:
    int* m_ended;
    std::vector<Counted*>* m_pool;
};

struct Derived : Counted {
    using Counted::Counted;
};

struct HandleTest : testing::Test {
    int ended = 0;
};

} // namespace

TEST_F(HandleTest, TheLastOneEndsTheObject)
{
    AddRefWrapper<Derived> const first(new Derived(ended));
    {
        AddRefWrapper<Counted> second(first);
        AddRefWrapper<Counted> third(std::move(second));
        EXPECT_EQ(first->refCount(), 2u);
        EXPECT_FALSE(second);
        AddRefWrapper<Counted> const& same = third;
        third = same;
        EXPECT_EQ(third, AddRefWrapper<Counted>(first));
    }
    EXPECT_EQ(first->refCount(), 1u);
    EXPECT_EQ(ended, 0);
    AddRefWrapper<Derived>(first).reset();
    EXPECT_EQ(ended, 0);
    const_cast<AddRefWrapper<Derived>&>(first) = nullptr;
    EXPECT_EQ(ended, 1);
}

TEST_F(HandleTest, AnOwnerCanTakeTheObjectBack)
{
    std::vector<Counted*> pool;
    AddRefWrapper<Counted>(new Counted(ended, &pool)).reset();
    ASSERT_EQ(pool.size(), 1u);
    EXPECT_EQ(ended, 0);
    delete pool[0];
}

TEST_F(HandleTest, ReleasingWithoutAReferenceDeletesNothing)
{
    Counted object(ended);
    object.release();
    EXPECT_EQ(object.refCount(), ~0u);
    EXPECT_EQ(ended, 0);
    object.addRef();
    EXPECT_EQ(object.refCount(), 0u);
}

TEST_F(HandleTest, ACopyOfTheObjectCarriesItsCount)
{
    AddRefWrapper<Counted> const handle(new Counted(ended));
    Counted const copy(*handle);
    EXPECT_EQ(copy.refCount(), 1u);
}

TEST(Flags, AMaskTestsForAnyOfItsBits)
{
    Flaggable<NodeFlags> flags(eInputIO);
    EXPECT_TRUE(flags.testFlag(eAnyIO));
    EXPECT_FALSE(flags.testFlag(eOutputIO));
    flags.setFlag(eOutputIO);
    EXPECT_EQ(flags.getFlags(), eInputIO | eOutputIO);
    flags.clearFlag(eAnyIO);
    EXPECT_FALSE(flags.anySet());
    EXPECT_FALSE(Flaggable<NodeFlags>().anySet());
}

} // namespace TAV_marlo_v1
