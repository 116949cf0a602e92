/// @file
/// Observes an attribute: follows its changes, and vetoes values that are out of range.

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/NewValueInfo.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/observers/InfoFailed.h>
#include <roamscan/frame/observers/Observer.h>

#include <cstdio>

using Bv_1_1::SmartPtr;
using oV::Attr;
using oV::Observer;

namespace
{

class RadiusObserver final : public Observer
{
public:
    // Before a change: the proposed value is a record at the attribute, and another record vetoes it.
    void toChangeNotify(Observer* subject, Observer* /*originator*/) override
    {
        auto const* const info = subject->lookupNotifyInfo(oV::NewValueInfo<double>::Class());
        if (info != nullptr && static_cast<oV::NewValueInfo<double> const*>(info)->newValue() <= 0.0) {
            subject->addNotifyInfo(new oV::InfoFailed);
        }
    }

    // After a change.
    void changedNotify(Observer* subject, Observer* /*originator*/) override
    {
        std::printf("the radius is now %g m\n", static_cast<Attr<double>*>(subject)->getValue());
    }
};

} // namespace

int main()
{
    SmartPtr<Attr<double>> const radius(new Attr<double>(Bv_1_1::BaseNode::CreateType::Fresh, nullptr));
    SmartPtr<RadiusObserver> const observer(new RadiusObserver);
    radius->addObserver(observer.get(), Observer::Notice::ToChange);
    radius->addObserver(observer.get(), Observer::Notice::Changed);

    bool const isSet = radius->assignFrom(0.2, nullptr, nullptr);
    bool const isVetoed = !radius->assignFrom(-1.0, nullptr, nullptr);
    std::printf("-1 m was %s, the radius is %g m\n", isVetoed ? "vetoed" : "accepted", radius->getValue());
    return isSet && isVetoed && radius->getValue() == 0.2 ? 0 : 1;
}
