// The classes whose virtual tables .ci/check-virtual-tables compares with .ci/virtual-tables.txt. A call of a
// virtual function that a class itself declares makes the compiler lay out the table of that class.

#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/attributes/NewValueInfo.h>
#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/detail/IOCodeException.h>
#include <roamscan/frame/log/Models.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/frame/scene/Line.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/frame/scene/Transform.h>
#include <roamscan/geometry/IRoamscanData.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>

template <typename Class>
void layOut(Class* object)
{
    object->~Class();
}

template void layOut(Bv_1_1::oVClass*);
template void layOut(Bv_1_1::BaseNode*);

template void layOut(oV::ThrowableException*);
template void layOut(oV::IntException*);
template void layOut(oV::InternalErrorException*);
template void layOut(oV::ExceptionBase*);
template void layOut(oV::VisibleException*);
template void layOut(oV::Roamscan::IOCodeException*);

template void layOut(oV::Models*);

template void layOut(oV::Observer*);

template void layOut(oV::Roamscan::RoamscanOptionsCont*);
template void layOut(oV::Roamscan::RoamscanOptions*);

template void layOut(oV::Object*);
template void layOut(oV::Transform*);
template void layOut(oV::Line*);
template void layOut(oV::Sphere*);
template void layOut(oV::ObjectAttribute<Bv_1_1::String>*);

template void layOut(oV::Attribute*);
template void layOut(oV::AttrContainer*);
template void layOut(oV::AttrVal<bool>*);
template void layOut(oV::AttrVal<int>*);
template void layOut(oV::AttrVal<double>*);
template void layOut(oV::AttrVal<Bv_1_1::String>*);
template void layOut(oV::Attr<bool>*);
template void layOut(oV::Attr<int>*);
template void layOut(oV::Attr<double>*);
template void layOut(oV::Attr<Bv_1_1::String>*);
template void layOut(oV::CustAttr<bool>*);
template void layOut(oV::CustAttr<int>*);
template void layOut(oV::CustAttr<double>*);
template void layOut(oV::CustAttr<Bv_1_1::String>*);
template void layOut(oV::NewValueInfo<bool>*);
template void layOut(oV::NewValueInfo<int>*);
template void layOut(oV::NewValueInfo<double>*);
template void layOut(oV::NewValueInfo<Bv_1_1::String>*);

// Classes without a virtual destructor.
void layOutOthers(oV::Roamscan::IRoamscanData& data, oV::Roamscan::InterpolatedTrajectoryPathBuilder& builder)
{
    data.reserved1();
    static_cast<void>(builder.build());
}
