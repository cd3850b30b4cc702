#include "utilities/system/Observable.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/ThreadTeam.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <stdexcept>

namespace {

/// Writes down what it is told, and answers once.
class Listener final : public Observer {
public:
    explicit Listener(std::string& journalOfAll, char ownName = 'd')
        : journal(journalOfAll), name(ownName) {}

    void OnNotify(int code, void* data, Observable* source) override {
        journal += name + std::to_string(code) + (data == &journal ? " " : "! ");
        if (answer)
            std::exchange(answer, nullptr)(*source);
    }
    void Attach(Observable* subject) override {
        ++attached;
        subject->RegisterObservations(this, 3, -7, 5, 3, 0, 2147483647, -1, 9);
    }

    std::function<void(Observable&)> answer;
    int attached = 0;

private:
    std::string& journal;
    char name;
};

class Observables : public testing::Test {
protected:
    Observables() {
        for (Listener* each : {&a, &b, &c})
            subject.AddObserver(each);
    }
    std::string Sent(int code) {
        journal.clear();
        subject.SendNotification(code, &journal);
        return journal;
    }

    std::string journal;
    Listener a{journal, 'a'}, b{journal, 'b'}, c{journal, 'c'};
    Observable subject;
};

TEST_F(Observables, GetTheCodesTheyRegistered) {
    subject.AddObserver(nullptr);
    subject.AddObserver(&b);
    EXPECT_EQ(b.attached, 2);
    EXPECT_EQ(Sent(3), "a3 b3 c3 ") << "once, in the order of registration";
    EXPECT_EQ(Sent(2147483647), "a2147483647 b2147483647 c2147483647 ");
    for (const int code : {9, -7, 4})
        EXPECT_EQ(Sent(code), "") << code;
    Listener stranger(journal);
    for (Listener* each : {&a, &a, &stranger, static_cast<Listener*>(nullptr)})
        subject.RemoveObserver(each);
    EXPECT_EQ(Sent(0), "b0 c0 ");
    subject.RemoveAllObservers();
    EXPECT_EQ(Sent(5), "");
    subject.AddObserver(&c);
    EXPECT_EQ(Sent(5), "c5 ");
}

TEST(Observable, StaysWholeWhateverIsDoneDuringADelivery) {
    AllocationFault fault("vtrutils.dll");
    struct Row {
        const char* name;
        std::function<void(Observable&, Observer* (&)[4])> answer; ///< of the second of three
        const char *first, *next;
    };
    const Row rows[] = {
        {"removes itself and the next, then notifies",
         [](auto& subject, auto& all) {
             subject.RemoveObserver(all[1]);
             subject.RemoveObserver(all[2]);
             subject.SendNotification(5, nullptr);
         },
         "a3 b3 a5! ", "a3 "},
        {"removes all others, which come back",
         [](auto& subject, auto& all) {
             for (Observer* each : {all[0], all[2], all[2]})
                 subject.RemoveObserver(each);
             subject.AddObserver(all[0]);
             subject.AddObserver(all[2]);
         },
         "a3 b3 c3 ", "a3 b3 c3 "},
        {"adds another", [](auto& subject, auto& all) { subject.AddObserver(all[3]); }, "a3 b3 c3 ",
         "a3 b3 c3 d3 "},
        {"lets all go and adds another",
         [](auto& subject, auto& all) {
             subject.RemoveAllObservers();
             subject.AddObserver(all[3]);
         },
         "a3 b3 ", "d3 "},
        {"cannot remember whom it removes",
         [&](auto& subject, auto& all) {
             fault.FailAt(1);
             subject.RemoveObserver(all[0]);
             fault.FailAt(1);
             subject.RemoveObserver(all[1]);
             fault.FailAt(0);
         },
         "a3 b3 c3 ", "c3 "},
        {"throws",
         [](auto& subject, auto& all) {
             subject.RemoveObserver(all[1]);
             throw std::runtime_error("from the host");
         },
         "a3 b3 ", "a3 c3 "},
    };
    for (const Row& row : rows) {
        std::string journal;
        Listener a(journal, 'a'), b(journal, 'b'), c(journal, 'c'), d(journal, 'd');
        Observer* all[] = {&a, &b, &c, &d};
        Observable subject;
        for (int i = 0; i < 3; ++i)
            subject.AddObserver(all[i]);
        b.answer = [&](Observable& source) {
            EXPECT_EQ(&source, &subject);
            row.answer(source, all);
        };
        try {
            subject.SendNotification(3, &journal);
        } catch (const std::runtime_error&) {
        }
        EXPECT_EQ(journal, row.first) << row.name;
        EXPECT_EQ(c.attached, 1) << row.name << ": a removal taken back";
        journal.clear();
        OnOtherThread([&] { return subject.SendNotification(3, &journal), true; });
        EXPECT_EQ(journal, row.next) << row.name;
    }
}

TEST(Observable, DoesWhatATableOfSetsDoes) {
    class Any final : public Observer {
    public:
        void OnNotify(int, void* data, Observable*) override { ++*static_cast<int*>(data); }
        void Attach(Observable* subject) override { subject->RegisterObservations(this, code, -1); }
        int code = 0;
    };
    constexpr unsigned seed = 61;
    std::mt19937 random(seed);
    std::vector<Any> observers(40);
    Observable subject;
    std::array<std::set<Any*>, 60> model;
    for (int round = 0; round < 8000; ++round) {
        Any& observer = observers[random() % observers.size()];
        observer.code = static_cast<int>(random() % model.size());
        auto& registered = model[static_cast<std::size_t>(observer.code)];
        if (random() % 40 == 0) {
            subject.RemoveObserver(&observer);
            for (auto& each : model)
                each.erase(&observer);
        } else {
            subject.AddObserver(&observer);
            registered.insert(&observer);
        }
        int calls = 0;
        subject.SendNotification(observer.code, &calls);
        ASSERT_EQ(calls, static_cast<int>(registered.size())) << "seed " << seed << ", " << round;
    }
}

TEST_F(Observables, WaitForTheLock) {
    // Where a host that shares the record sees it.
    auto& section = *reinterpret_cast<CRITICAL_SECTION*>(reinterpret_cast<char*>(&subject) + 136);
    EXPECT_TRUE(WaitsAt(section, [this] { subject.AddObserver(&a); }));
    EXPECT_TRUE(WaitsAt(section, [this] { subject.SendNotification(3, nullptr); }));
    EXPECT_TRUE(WaitsAt(section, [this] { subject.RemoveObserver(&a); }));
    EXPECT_TRUE(WaitsAt(section, [this] { subject.RemoveAllObservers(); }));
}

TEST_F(Observables, AreRegisteredOrNotWhenMemoryRunsOut) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([&](unsigned n) {
        subject.RemoveAllObservers();
        subject.AddObserver(&a);
        fault.FailAt(0);
        subject.AddObserver(&b);
        for (const int code : {3, 5, 0}) {
            const std::string sent = Sent(code), last = "b" + std::to_string(code) + " ";
            EXPECT_TRUE(sent == last || sent == "a" + std::to_string(code) + " " + last) << n;
        }
    });
    EXPECT_GE(failures, 3u);
}

} // namespace
