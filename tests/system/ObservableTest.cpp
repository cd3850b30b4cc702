#include "utilities/system/Observable.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/ThreadTeam.h"

#include <atomic>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// Writes down what it is told and does what the test asks of it.
class Listener final : public Observer {
public:
    Listener(std::string& journalOfAll, char ownName) : journal(journalOfAll), name(ownName) {}

    void OnNotify(int code, void*, Observable* source) override {
        journal += name + std::to_string(code) + " ";
        if (react)
            react(source);
    }
    void Attach(Observable* subject) override {
        ++attached;
        subject->RegisterObservations(this, 3, -7, 5, 3, 0, -1, 9);
    }

    std::function<void(Observable*)> react;
    int attached = 0;

private:
    std::string& journal;
    char name;
};

class Observables : public testing::Test {
protected:
    std::string Sent(int code) {
        journal.clear();
        subject->SendNotification(code, nullptr);
        return journal;
    }

    std::string journal;
    Listener a{journal, 'a'};
    Listener b{journal, 'b'};
    Listener c{journal, 'c'};
    std::unique_ptr<Observable> subject = std::make_unique<Observable>();
};

TEST_F(Observables, GetTheCodesTheyRegistered) {
    subject->AddObserver(&a);
    subject->AddObserver(&b);
    subject->AddObserver(nullptr);
    subject->AddObserver(&a);
    EXPECT_EQ(a.attached, 2);
    EXPECT_EQ(Sent(3), "a3 b3 ") << "once, in the order of registration";
    EXPECT_EQ(Sent(0), "a0 b0 ");
    EXPECT_EQ(Sent(9), "") << "behind the end of the codes";
    EXPECT_EQ(Sent(-7), "");
    EXPECT_EQ(Sent(4), "");
    subject->RemoveObserver(&a);
    subject->RemoveObserver(&c);
    subject->RemoveObserver(nullptr);
    EXPECT_EQ(Sent(5), "b5 ");
    subject->RemoveAllObservers();
    EXPECT_EQ(Sent(5), "");
    subject->AddObserver(&c);
    EXPECT_EQ(Sent(5), "c5 ");
}

TEST_F(Observables, GetDataAndSource) {
    class Reader final : public Observer {
    public:
        void OnNotify(int, void* data, Observable* source) override {
            got = data;
            from = source;
        }
        void Attach(Observable* observable) override {
            observable->RegisterObservations(this, 2147483647, -1);
        }
        void* got = nullptr;
        Observable* from = nullptr;
    } reader;
    subject->AddObserver(&reader);
    subject->SendNotification(2147483647, &journal);
    EXPECT_EQ(reader.got, &journal);
    EXPECT_EQ(reader.from, subject.get());
}

TEST_F(Observables, RemovedDuringADeliveryGetNothingMore) {
    for (Listener* each : {&a, &b, &c})
        subject->AddObserver(each);
    a.react = [this](Observable* source) {
        a.react = nullptr;
        source->RemoveObserver(&a);
        source->RemoveObserver(&b);
        source->SendNotification(5, nullptr);
    };
    EXPECT_EQ(Sent(3), "a3 c5 c3 ") << "not even what is sent in the same delivery";
    subject->AddObserver(&b);
    EXPECT_EQ(b.attached, 2) << "its removal was done at the end of the delivery";
    EXPECT_EQ(Sent(3), "c3 b3 ");
}

TEST_F(Observables, AddedAgainDuringTheDeliveryStayWhereTheyWere) {
    for (Listener* each : {&a, &b})
        subject->AddObserver(each);
    a.react = [this](Observable* source) {
        source->RemoveObserver(&a);
        source->RemoveObserver(&a);
        source->AddObserver(&a);
    };
    EXPECT_EQ(Sent(3), "a3 b3 ");
    EXPECT_EQ(Sent(5), "a5 b5 ");
    EXPECT_EQ(a.attached, 1);
}

TEST_F(Observables, AddedDuringADeliveryWaitForTheNext) {
    subject->AddObserver(&a);
    a.react = [this](Observable* source) { source->AddObserver(&b); };
    EXPECT_EQ(Sent(3), "a3 ");
    a.react = nullptr;
    EXPECT_EQ(Sent(3), "a3 b3 ");
}

TEST_F(Observables, AreAllLetGoInTheMiddleOfADelivery) {
    for (Listener* each : {&a, &b})
        subject->AddObserver(each);
    a.react = [this](Observable* source) {
        source->RemoveAllObservers();
        source->AddObserver(&c);
    };
    EXPECT_EQ(Sent(3), "a3 ");
    EXPECT_EQ(Sent(3), "c3 ");
}

TEST_F(Observables, LeaveTheSubjectWholeWhenTheyThrow) {
    for (Listener* each : {&a, &b})
        subject->AddObserver(each);
    a.react = [this](Observable* source) {
        source->RemoveObserver(&a);
        throw std::runtime_error("from the host");
    };
    EXPECT_THROW(Sent(3), std::runtime_error);
    EXPECT_EQ(Sent(3), "b3 ") << "the removal was done";
    std::thread([this] { subject->RemoveObserver(&b); }).join();
    EXPECT_EQ(Sent(3), "") << "the lock was let go";
}

TEST_F(Observables, GoAtOnceWhenTheirRemovalCannotBeRemembered) {
    AllocationFault fault("vtrutils.dll");
    for (Listener* each : {&a, &b, &c})
        subject->AddObserver(each);
    b.react = [&](Observable* source) {
        fault.FailAt(1);
        source->RemoveObserver(&a);
        fault.FailAt(1);
        source->RemoveObserver(&b);
        fault.FailAt(0);
    };
    EXPECT_EQ(Sent(3), "a3 b3 c3 ") << "nobody is left out";
    b.react = nullptr;
    subject->AddObserver(&a);
    EXPECT_EQ(Sent(3), "c3 a3 ");
}

TEST_F(Observables, AreRegisteredOrNotWhenMemoryRunsOut) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([this](unsigned n) {
        subject = std::make_unique<Observable>();
        subject->AddObserver(&a);
        subject->AddObserver(&b);
        for (const int code : {3, 5, 0}) {
            const std::string all = "a" + std::to_string(code) + " b" + std::to_string(code) + " ";
            EXPECT_TRUE(all.find(Sent(code)) != std::string::npos) << n << ": " << journal;
        }
    });
    EXPECT_GE(failures, 3u);
}

TEST(Observable, DoesWhatATableOfSetsDoes) {
    class Any final : public Observer {
    public:
        void OnNotify(int, void* data, Observable*) override { ++*static_cast<int*>(data); }
        void Attach(Observable* subject) override {
            for (const int code : codes)
                subject->RegisterObservations(this, code, -1);
        }
        std::set<int> codes;
    };
    constexpr unsigned seed = 61;
    std::mt19937 random(seed);
    std::vector<Any> observers(40);
    Observable subject;
    std::map<int, std::set<Any*>> model;
    for (int round = 0; round < 5000; ++round) {
        Any& observer = observers[random() % observers.size()];
        const int code = static_cast<int>(random() % 60);
        if (random() % 3 == 0) {
            subject.RemoveObserver(&observer);
            for (auto& [each, registered] : model)
                registered.erase(&observer);
        } else {
            observer.codes = {code, static_cast<int>(random() % 60)};
            subject.AddObserver(&observer);
            for (const int each : observer.codes)
                model[each].insert(&observer);
        }
        int calls = 0;
        subject.SendNotification(code, &calls);
        ASSERT_EQ(calls, static_cast<int>(model[code].size())) << "seed " << seed << ", " << round;
    }
}

TEST(Observable, IsOneForManyThreads) {
    class Counter final : public Observer {
    public:
        void OnNotify(int code, void*, Observable* source) override {
            ++calls;
            if (code == 1)
                source->SendNotification(2, nullptr);
        }
        void Attach(Observable* subject) override { subject->RegisterObservations(this, 1, 2, -1); }
        int calls = 0; ///< changed under the subject's lock only
    };
    constexpr int rounds = 1500;
    for (const unsigned size : {2u, 6u}) {
        Observable subject;
        Counter permanent;
        subject.AddObserver(&permanent);
        std::atomic<int> faults{0};
        RunTeam("Observable", size, [&](unsigned) {
            Counter own;
            for (int i = 0; i < rounds; ++i) {
                subject.AddObserver(&own);
                const int before = own.calls;
                subject.SendNotification(1, nullptr);
                faults += own.calls < before + 2;
                subject.RemoveObserver(&own);
                const int after = own.calls;
                subject.SendNotification(2, nullptr);
                faults += own.calls != after;
            }
        });
        EXPECT_EQ(faults, 0) << size;
        // From each round: code 1, then code 2 from every observer that got it, and code 2 again.
        EXPECT_GE(permanent.calls, static_cast<int>(size) * rounds * 4);
    }
}

} // namespace
