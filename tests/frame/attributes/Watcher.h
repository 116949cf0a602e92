#pragma once

#include <roamscan/frame/observers/Observer.h>

#include <functional>
#include <string>
#include <vector>

namespace support
{

/// An observer that records its notifications in order, and then calls a function of the test.
class Watcher : public oV::Observer
{
public:
    void changedNotify(Observer* subject, Observer* originator) override
    {
        calls.emplace_back("changed");
        lastOriginator = originator;
        if (whenChanged) {
            whenChanged(*subject);
        }
    }
    void toChangeNotify(Observer* subject, Observer* originator) override
    {
        calls.emplace_back("toChange");
        lastOriginator = originator;
        if (whenToChange) {
            whenToChange(*subject);
        }
    }

    /// Observes both lists.
    void watch(Observer& subject)
    {
        subject.addObserver(this, Notice::Changed);
        subject.addObserver(this, Notice::ToChange);
    }

    std::vector<std::string> calls;
    Observer* lastOriginator = nullptr;
    std::function<void(Observer&)> whenChanged;
    std::function<void(Observer&)> whenToChange;
};

} // namespace support
