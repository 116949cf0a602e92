#pragma once

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/scene/ObjectAttribute.h>

#include <memory>
#include <span>
#include <variant>
#include <vector>

namespace oV
{

/// An object of a scene. It has a name, attributes that are found by index, and children, which it owns: a
/// scene is a tree.
///
/// A tree is for many readers or one writer. Releasing an object writes to its children. A scene of any size
/// and depth is released without recursion.
class ROAMSCAN_EXPORT Object : public Observer
{
public:
    /// A child, and the place that it was added with.
    struct Child
    {
        Bv_1_1::SmartPtr<Object> object; ///< Never null.
        int place = 0;
    };

    /// A pointer to an attribute of one of the types that scene objects have, or nothing.
    using AttributePointer = std::variant<std::monostate,
                                          ObjectAttribute<Bv_1_1::String>*,
                                          ObjectAttribute<double>*,
                                          ObjectAttribute<Bv_1_1::Vec3d<double>>*>;

    /// The index of the name, a string.
    static constexpr unsigned int nameAttribute = 0;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Sets up an object that was just made: takes over the values of `source`, unless it is null or the type
    /// is NoSource.
    /// @return true: the object is ready
    virtual bool init(CreateType type, Object const* source);

    /// Takes over the name, and what else both classes hold. Children stay where they are.
    bool copyFrom(Observer const* source) override;

    /// The attribute with the index, or nothing if there is none.
    [[nodiscard]] virtual AttributePointer attribute(unsigned int index);

    /// Sets the name, which is the attribute 0 as well. The other argument is not used; pass 0.
    /// @return true: every name is accepted
    virtual bool setName(Bv_1_1::String const& name, int reserved);

    /// The name; NIL until it is set.
    [[nodiscard]] Bv_1_1::String getName() const override;

    /// Appends a child and takes a reference to it.
    /// @param place kept with the child; children stay in the order of the calls
    /// @return false, and nothing changes, for null, for an object that has a parent already, and for this
    /// object itself or one that it is under
    bool addChild(Object* child, int place);

    /// The children in the order in which they were added. Valid until the next addChild().
    [[nodiscard]] std::span<Child const> children() const noexcept;

    /// The object that this one is a child of, or null.
    [[nodiscard]] Object const* parent() const noexcept { return parent_; }

protected:
    /// An object without a name and children. Both arguments are those of init(), which is to be called next.
    Object(CreateType type, Object const* source);
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;
    ~Object() override;

private:
    struct Children;

    static void release(std::unique_ptr<Children> children) noexcept;

    ObjectAttribute<Bv_1_1::String> name_;
    std::unique_ptr<Children> children_; // null: none
    Object const* parent_ = nullptr;
};

} // namespace oV
