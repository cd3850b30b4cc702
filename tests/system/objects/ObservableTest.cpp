#include "utilities/system/objects/Observable.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/ThreadTeam.h"

#include <gtest/gtest.h>
#include <optional>
#include <regex>
#include <stdexcept>

namespace {

/// Writes down what it is told, and answers once.
class Listener final : public Observer {
public:
    Listener(std::string& journalOfAll, char ownName) : journal(journalOfAll), name(ownName) {}

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
    Listener stranger(journal, 'd');
    for (Listener* each : {&a, &a, &stranger, static_cast<Listener*>(nullptr)})
        subject.RemoveObserver(each);
    EXPECT_EQ(Sent(0) + Sent(3) + Sent(5), "b0 c0 b3 c3 b5 c5 ");
    EXPECT_EQ(Sent(2147483647), "b2147483647 c2147483647 ");
    subject.RemoveAllObservers();
    EXPECT_EQ(Sent(5), "");
    subject.AddObserver(&c);
    EXPECT_EQ(Sent(5), "c5 ");
}

/// What three observers get while the second follows a script when it is told first, and what they
/// get then, for the first and for the last code. A script: -b removes, +b adds, *5 notifies, x
/// lets all go, ! throws, ? has no memory for the next step, ~ destroys the subject, ^ has the
/// third observer do so.
TEST(Observable, StaysWholeWhateverIsDoneDuringADelivery) {
    struct Row {
        const char *name, *script, *first, *next;
    };
    const Row rows[] = {
        {"removes itself and the next, then notifies", "-b -c *5", "a3 b3 a5 ", "a3 "},
        {"removes others, twice, that come back", "-a -c -c +a +c", "a3 b3 c3 ", "a3 b3 c3 "},
        {"adds another", "+d", "a3 b3 c3 ", "a3 b3 c3 d3 "},
        {"lets all go and adds another", "x +d", "a3 b3 ", "d3 "},
        {"cannot remember whom it removes", "?-a ?-b", "a3 b3 c3 ", "c3 "},
        {"throws", "-b !", "a3 b3 ", "a3 c3 "},
        {"destroys the subject", "-a ~", "a3 b3 ", ""},
        {"notifies, and another destroys the subject", "-a ^ *5", "a3 b3 b5 c5 ", ""},
    };
    AllocationFault fault("vtrutils.dll");
    for (const Row& row : rows) {
        std::string journal;
        Listener all[] = {{journal, 'a'}, {journal, 'b'}, {journal, 'c'}, {journal, 'd'}};
        std::optional<GuardedBytes> memory(sizeof(Observable));
        auto* subject = new (memory->Data()) Observable;
        const auto destroy = [&](Observable& source) {
            source.~Observable();
            subject = nullptr;
            memory.reset(); // to touch it ends the program
        };
        for (int i = 0; i < 3; ++i)
            subject->AddObserver(&all[i]);
        all[1].answer = [&](Observable& source) {
            EXPECT_EQ(&source, subject);
            for (const char* step = row.script; *step != '\0'; ++step) {
                if (*step == '-')
                    source.RemoveObserver(&all[step[1] - 'a']);
                else if (*step == '+')
                    source.AddObserver(&all[step[1] - 'a']);
                else if (*step == '*')
                    source.SendNotification(step[1] - '0', &journal);
                else if (*step == 'x')
                    source.RemoveAllObservers();
                else if (*step == '!')
                    throw std::runtime_error("from the host");
                else if (*step == '~')
                    destroy(source);
                else if (*step == '^')
                    all[2].answer = destroy;
                fault.FailFrom(*step == '?');
            }
        };
        try {
            subject->SendNotification(3, &journal);
        } catch (const std::runtime_error&) {
        }
        EXPECT_EQ(journal, row.first) << row.name;
        EXPECT_EQ(all[2].attached, 1) << row.name << ": a removal taken back";
        for (const int code : {3, 2147483647}) {
            journal.clear();
            if (subject != nullptr)
                std::thread([&] { subject->SendNotification(code, &journal); }).join();
            EXPECT_EQ(std::regex_replace(journal, std::regex("[0-9]+"), "3"), row.next)
                << row.name << ", " << code;
        }
        if (subject != nullptr)
            destroy(*subject);
    }
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
