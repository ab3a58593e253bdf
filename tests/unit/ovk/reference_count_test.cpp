// The reference count and its bridge to shared ownership, and interface_ptr's rules.
#include "probe.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <thread>

namespace ovk::testing {
namespace {

TEST(ReferenceCountTest, ObjectStaysAliveThroughReleaseToZeroWhileASharedPointerIsHeld) {
    ProbeDeath death;
    auto* probe = new CProbe(death);
    boost::shared_ptr<IObject> shared;
    probe->GetShared(shared);
    ASSERT_TRUE(shared);

    probe->Release();
    EXPECT_EQ(death.count, 0) << "a shared pointer still holds the object";

    // Owned again: dropping the shared pointer now must not destroy it.
    probe->AddRef();
    shared.reset();
    EXPECT_EQ(death.count, 0);

    probe->Release();
    EXPECT_EQ(death.count, 1);
}

TEST(ReferenceCountTest, SharedPointerLockedOnAnotherThreadOutlivesTheLastRelease) {
    ProbeDeath death;
    auto* probe = new CProbe(death);
    std::promise<void> locked;
    std::promise<void> released;
    std::thread holder([&, future = released.get_future()]() mutable {
        boost::shared_ptr<IObject> shared;
        probe->GetShared(shared);
        locked.set_value();
        future.wait();
        EXPECT_EQ(death.count, 0);
        EXPECT_EQ(dynamic_cast<IGreeter*>(shared.get())->Greet(), 42);
    });
    locked.get_future().wait();
    probe->Release();
    released.set_value();
    holder.join();
    EXPECT_EQ(death.count, 1) << "the last shared pointer went with the thread";
}

TEST(ReferenceCountTest, DuringDestructionGetSharedIsEmptyAndSharedFromIntrusiveThrows) {
    ProbeDeath death;
    (new CProbe(death))->Release();
    ASSERT_EQ(death.count, 1);
    EXPECT_TRUE(death.sharedWasEmpty);
    EXPECT_TRUE(death.sharedFromIntrusiveThrew);
}

class CThrowsInConstructor : public virtual detail::CInterface {
public:
    CThrowsInConstructor() { throw std::runtime_error("refused"); }
};

// The self reference made by the base must not delete the object a second time.
TEST(ReferenceCountTest, DerivedConstructorThatThrowsFreesTheObjectOnce) {
    EXPECT_THROW(new CThrowsInConstructor, std::runtime_error);
}

TEST(InterfacePtrTest, ConstructionAdoptsTheCreatorsReference) {
    ProbeDeath death;
    {
        interface_ptr<IGreeter> greeter(new CProbe(death));
        EXPECT_EQ(greeter->Greet(), 42);
    }
    EXPECT_EQ(death.count, 1);
}

TEST(InterfacePtrTest, SelfAssignmentKeepsTheObject) {
    ProbeDeath death;
    interface_ptr<IGreeter> greeter(new CProbe(death));
    greeter = greeter.get();
    const interface_ptr<IGreeter>& same = greeter;
    greeter = same;
    EXPECT_EQ(death.count, 0);
    ASSERT_TRUE(greeter);
    EXPECT_EQ(greeter->Greet(), 42);
    greeter.reset();
    EXPECT_EQ(death.count, 1);
}

TEST(InterfacePtrTest, AssignmentFromARawPointerTakesANewReference) {
    ProbeDeath death;
    auto* probe = new CProbe(death);
    {
        interface_ptr<IGreeter> greeter;
        greeter = probe;
    }
    EXPECT_EQ(death.count, 0) << "the creator's reference is still out";
    probe->Release();
    EXPECT_EQ(death.count, 1);
}

TEST(InterfacePtrTest, CallsThroughAnEmptyObjectPointerReachTheNullObject) {
    interface_ptr<IObject> empty;
    ASSERT_NE(empty.operator->(), nullptr);
    EXPECT_EQ(empty.get(), nullptr);
    empty->AddRef();
    empty->Release();

    ProbeDeath death;
    interface_ptr<IObject> other(new CProbe(death));
    boost::shared_ptr<IObject> shared;
    other->GetShared(shared);
    ASSERT_TRUE(shared);
    empty->GetShared(shared);
    EXPECT_FALSE(shared);
}

TEST(InterfacePtrTest, QueryGivesAHoldingPointerOrEmptyForAMissingService) {
    ProbeDeath death;
    interface_ptr<IObject> object(new CProbe(death));

    interface_ptr<IGreeter> greeter = interface_cast<IGreeter>(object);
    EXPECT_FALSE(interface_cast<IUnsupported>(object));
    EXPECT_FALSE(interface_cast<IGreeter>(interface_ptr<IObject>()));

    object.reset();
    ASSERT_TRUE(greeter);
    EXPECT_EQ(death.count, 0);
    EXPECT_EQ(greeter->Greet(), 42);
    greeter.reset();
    EXPECT_EQ(death.count, 1);
}

}  // namespace
}  // namespace ovk::testing
