#include <roamscan/frame/bvbase/Module.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/scene/Object.h>

#include <utility>

namespace oV
{

struct Object::Children
{
    std::vector<Child> list;
    std::unique_ptr<Children> next; // of the children that wait to be released
};

Bv_1_1::oVClass const* Object::Class()
{
    static Bv_1_1::oVClass const record(
        L"Object", Observer::Class(), Bv_1_1::Module::library(), Bv_1_1::ClassVersion{0});
    return &record;
}

Object::Object(CreateType /*type*/, Object const* /*source*/) {}

Object::~Object()
{
    if (children_ != nullptr) {
        release(std::move(children_));
    }
}

// Not recursive: an object that is destroyed during the loop only appends its children to the list. Nothing
// is allocated, so nothing can fail.
void Object::release(std::unique_ptr<Children> children) noexcept
{
    static constinit thread_local std::unique_ptr<Children>* waiting = nullptr;
    if (waiting != nullptr) {
        children->next = std::move(*waiting);
        *waiting = std::move(children);
        return;
    }
    std::unique_ptr<Children> first = std::move(children);
    waiting = &first;
    while (first != nullptr) {
        std::unique_ptr<Children> const current = std::move(first);
        first = std::move(current->next);
        for (Child& child : current->list) {
            child.object->parent_ = nullptr;
            child.object.reset();
        }
    }
    waiting = nullptr;
}

Bv_1_1::oVClass const* Object::getClassType() const
{
    return Class();
}

bool Object::init(CreateType type, Object const* source)
{
    if (type != CreateType::NoSource && source != nullptr) {
        copyFrom(source);
    }
    return true;
}

bool Object::copyFrom(Observer const* source)
{
    auto const* const object = dynamic_cast<Object const*>(source);
    return object != nullptr && name_.assignFrom(&object->name_.value(), nullptr, nullptr);
}

Object::AttributePointer Object::attribute(unsigned int index)
{
    if (index == nameAttribute) {
        return &name_;
    }
    return {};
}

bool Object::setName(Bv_1_1::String const& name, int /*reserved*/)
{
    return name_.assignFrom(&name, nullptr, nullptr);
}

Bv_1_1::String Object::getName() const
{
    return name_.value();
}

bool Object::addChild(Object* child, int place)
{
    if (child == nullptr || child->parent_ != nullptr || child == this) {
        return false;
    }
    if (child->children_ != nullptr) { // otherwise it cannot be an ancestor of this object
        for (Object const* above = parent_; above != nullptr; above = above->parent_) {
            if (above == child) {
                return false;
            }
        }
    }
    if (children_ == nullptr) {
        children_ = std::make_unique<Children>();
    }
    children_->list.push_back({Bv_1_1::SmartPtr<Object>(child), place});
    child->parent_ = this;
    return true;
}

std::span<Object::Child const> Object::children() const noexcept
{
    return children_ == nullptr ? std::span<Child const>() : children_->list;
}

} // namespace oV
