#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/ObserverInfo.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/observers/ObserverList.h>
#include <roamscan/frame/platform/Export.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <unordered_map>
#include <vector>

namespace oV
{

class AttrContainer;
class ObserverRelationTable;
class ReadContextBase;
class WriteContextBase;

/// An object that can be observed and that can observe others. Every observer has two lists: those who are
/// asked before it changes (toChangeNotify) and those who hear that it has changed (changedNotify).
///
/// Neither side owns the other. When an observed object goes away, its observers are informed
/// (informDelete); when an observer goes away, it leaves all lists. Observers may read, add and remove
/// themselves and others while they are notified, and may drop the last reference to the observed object;
/// what they throw passes through to whoever made the change, and the lists stay valid.
///
/// An observer, its lists and its records are for many readers or one writer. The order of the virtual
/// operations is part of the binary interface.
class ROAMSCAN_EXPORT Observer : public Bv_1_1::BaseNode
{
public:
    /// What an observer wants to hear.
    enum class Notice : std::uint8_t
    {
        Changed, ///< after a change: changedNotify()
        ToChange ///< before a change, which can be refused: toChangeNotify()
    };

    /// What an observer needs only if it is observed or observes, so most objects have none.
    struct ROAMSCAN_EXPORT ParamsEx
    {
        /// Bit of `flags`: the object is about to go away and takes no more observers.
        static constexpr std::uint32_t leaving = 1;
        /// Bit of `flags`: changes are announced to the second list. Set when an observer joins it.
        static constexpr std::uint32_t announcing = 4;

        std::uint32_t flags = 0; ///< `leaving` and `announcing`
        ObserverList changed;    ///< the first list: Notice::Changed
        ObserverList toChange;   ///< the second list: Notice::ToChange
        /// The notification records, the oldest first.
        std::vector<Bv_1_1::SmartPtr<Bv_1_1::ObserverInfo>> infos;
        /// The objects that this one observes, with the number of their lists that it is in.
        std::unordered_map<Observer*, std::uint32_t> observed;
    };

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// The table from sources to copies of the copy operation that is under way on this thread, or null
    /// (PreserveObserverRelation).
    [[nodiscard]] static ObserverRelationTable* srcToCopyTable() noexcept;

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Takes over what `source` holds, as far as the classes have something in common. Here: nothing.
    /// @return whether anything was taken over
    virtual bool copyFrom(Observer const* source);

    /// Called on a finished copy: each observer of the copy's source that has been copied too becomes an
    /// observer of this copy.
    virtual void updateObservers(ObserverRelationTable const& table);

    /// The first notification hook: asks those who want to know before a change (the second list).
    /// @param originator who makes the change; may be null
    virtual void notifyToChange(Observer* originator);

    /// The second notification hook: tells those who want to know after a change (the first list).
    /// @param originator who made the change; may be null
    virtual void notifyChanged(Observer* originator);

    /// Called on an observer when `subject` has changed. Here: does nothing.
    virtual void changedNotify(Observer* subject, Observer* originator);

    /// Called on an observer when `subject` is about to change. To refuse, leave an InfoFailed record at the
    /// subject (addNotifyInfo). Here: does nothing.
    virtual void toChangeNotify(Observer* subject, Observer* originator);

    /// The object that goes by this name from here, or null. Here: null.
    [[nodiscard]] virtual Observer* inqObserver(Bv_1_1::String const& name);

    /// The object's name. Here: NIL.
    [[nodiscard]] virtual Bv_1_1::String getName() const;

    /// Where the object is, for people. Here: the name.
    [[nodiscard]] virtual Bv_1_1::String inqDisplayPath() const;

    /// Where the object is, as a path of names. Here: the name.
    [[nodiscard]] virtual Bv_1_1::String inqObjPath() const;

    /// Whether the object is in the host's tree of models. Here: false.
    [[nodiscard]] virtual bool isPartOfMainTree() const;

    /// Reads the object from a model stream. Here: reads nothing.
    /// @return a status, 0 for success
    virtual int readFrom(std::istream* stream, ReadContextBase* context);

    /// Writes the object to a model stream. Here: writes nothing.
    /// @return a status, 0 for success
    virtual int writeTo(std::ostream* stream, WriteContextBase* context) const;

    /// Called on an observer when an object that it observes goes away; only the address of `subject` may be
    /// used, and the observer has left its lists already. Here: does nothing.
    virtual void informDelete(Observer* subject) noexcept;

    /// The object that this one belongs to, or null. Here: null.
    [[nodiscard]] virtual AttrContainer* lookupObject();

    /// Lets `observer` observe this object.
    /// @return false if it does so already, for null, and for an object that is about to go away
    bool addObserver(Observer* observer, Notice notice = Notice::Changed);

    /// Undoes addObserver().
    /// @return false if the observer was not in the list
    bool removeObserver(Observer* observer, Notice notice = Notice::Changed) noexcept;

    /// Leaves a record at this object, which takes a reference.
    void addNotifyInfo(Bv_1_1::ObserverInfo* info);

    /// Removes one record. With `release`, the memory of an empty list is given back, too.
    /// @return false if there is no such record
    bool removeNotifyInfo(Bv_1_1::ObserverInfo const* info, bool release);

    /// Removes all records. With `release`, the memory of the list is given back, too.
    void removeNotifyInfos(bool release);

    /// The newest record whose class is `type` or derives from it, or null.
    [[nodiscard]] Bv_1_1::ObserverInfo* lookupNotifyInfo(Bv_1_1::oVClass const* type) const;

    /// Notifies the observers of one of this object's lists, in their order: toChangeNotify() for the second
    /// list, changedNotify() for any other. Observers who join during the call hear of the next one.
    void notifySequence(Observer* originator, ObserverList* list);

    /// The extra parameters, or null as long as they are not needed.
    [[nodiscard]] ParamsEx* parEx() const noexcept { return params_.get(); }

protected:
    Observer() noexcept;
    /// A copy has neither observers nor records.
    Observer(Observer const& other) noexcept;
    /// Observers and records stay where they are.
    Observer& operator=(Observer const& other) noexcept;
    ~Observer() override;

    /// Ends all relations to others: informs the observers, leaves all lists, drops the records. For a
    /// destructor that has to do more once that is done.
    void endRelations() noexcept;

    /// Removes the records whose class neither is `type` nor derives from it; all records if it is null.
    void removeNotifyInfosExcept(Bv_1_1::oVClass const* type) noexcept;

private:
    ParamsEx& makeParams();
    [[nodiscard]] ObserverList& listOf(Notice notice) const noexcept;
    void detachObservers(ObserverList& list) noexcept;

    std::unique_ptr<ParamsEx> params_;
};

} // namespace oV
