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

/// A node of a scene, which is a tree. It has a name, attributes that are identified by index, and children,
/// which it owns.
///
/// Thread safety: concurrent reads of a tree are safe; a write needs exclusive access. Releasing an object
/// writes to its children. A tree of any depth is released without recursion.
class ROAMSCAN_EXPORT Object : public Observer
{
public:
    /// A child and the `place` that was given to addChild().
    struct Child
    {
        Bv_1_1::SmartPtr<Object> object; ///< Never null.
        int place = 0;                   ///< The argument of addChild().
    };

    /// A pointer to an attribute of one of the types that scene objects have, or nothing.
    using AttributePointer = std::variant<std::monostate,
                                          ObjectAttribute<Bv_1_1::String>*,
                                          ObjectAttribute<double>*,
                                          ObjectAttribute<Bv_1_1::Vec3d<double>>*>;

    /// The index of the name, a string.
    static constexpr unsigned int nameAttribute = 0;

    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Initialises a new object with the values of `source`, unless that is null or the type is NoSource.
    /// @return always true
    virtual bool init(CreateType type, Object const* source);

    /// Copies the name, and the other values that both classes have. Children are not copied.
    bool copyFrom(Observer const* source) override;

    /// The attribute with the index, or nothing if there is none.
    [[nodiscard]] virtual AttributePointer attribute(unsigned int index);

    /// Sets the name, which is also the attribute 0.
    /// @param name any name
    /// @param reserved not used; pass 0
    /// @return always true
    virtual bool setName(Bv_1_1::String const& name, int reserved);

    /// The name; NIL until it is set.
    [[nodiscard]] Bv_1_1::String getName() const override;

    /// Appends a child and takes a reference to it.
    /// @param child must not have a parent
    /// @param place stored with the child; it does not affect the order of the children
    /// @return false if `child` is null, already has a parent, or is this object or one of its ancestors;
    ///     nothing changes then
    bool addChild(Object* child, int place);

    /// The children in the order in which they were added. Valid until the next addChild().
    [[nodiscard]] std::span<Child const> children() const noexcept;

    /// The parent of this object, or null.
    [[nodiscard]] Object const* parent() const noexcept { return parent_; }

protected:
    /// An object without a name and children. Call init() with the same arguments afterwards.
    Object(CreateType type, Object const* source);
    ~Object() override;

private:
    struct Children;

    ROAMSCAN_NO_EXPORT static void release(std::unique_ptr<Children> children) noexcept;

    ObjectAttribute<Bv_1_1::String> name_;
    std::unique_ptr<Children> children_; // null: none
    Object const* parent_ = nullptr;
};

} // namespace oV
