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

/// An object that can be observed and can observe others (observer pattern). The observed object is called
/// the subject.
///
/// A subject has two lists of observers. Those of the first list are notified after a change (changedNotify).
/// Those of the second list are notified before a change, and can veto it (toChangeNotify).
///
/// Neither side owns the other. When a subject is destroyed, its observers are notified (informDelete). When
/// an observer is destroyed, it is removed from all lists. During a notification, observers may be added and
/// removed, and the last reference to the subject may be removed. Exceptions of an observer pass through to
/// the caller that made the change; the lists stay valid.
///
/// Thread safety: concurrent reads of an observer, its lists and its records are safe; a write needs
/// exclusive access. The order of the virtual operations is part of the binary interface.
class ROAMSCAN_EXPORT Observer : public Bv_1_1::BaseNode
{
public:
    /// When an observer is notified.
    enum class Notice : std::uint8_t
    {
        Changed, ///< after a change, by changedNotify(); the first list
        ToChange ///< before a change, by toChangeNotify(), which can veto it; the second list
    };

    /// The extra parameters: data that is allocated only for an object that is observed, observes others or
    /// has notification records.
    struct ROAMSCAN_EXPORT ParamsEx
    {
        /// Bit of `flags`: the object is being destroyed and accepts no more observers.
        static constexpr std::uint32_t leaving = 1;
        /// Bit of `flags`: the second list is notified before changes. Set when an observer is added to it.
        static constexpr std::uint32_t announcing = 4;

        std::uint32_t flags = 0; ///< `leaving` and `announcing`
        ObserverList changed;    ///< the first list: Notice::Changed
        ObserverList toChange;   ///< the second list: Notice::ToChange
        /// The notification records, oldest first.
        std::vector<Bv_1_1::SmartPtr<Bv_1_1::ObserverInfo>> infos;
        /// The subjects that this object observes, each with the number of its lists that contain this
        /// object.
        std::unordered_map<Observer*, std::uint32_t> observed;
    };

    /// The record of this class.
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// The table from sources to copies of the current copy operation on this thread, or null if there is
    /// none; see PreserveObserverRelation.
    [[nodiscard]] static ObserverRelationTable* srcToCopyTable() noexcept;

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;

    /// Copies the values of `source` that both classes have. The base class copies nothing and returns false.
    /// @return whether anything was copied
    virtual bool copyFrom(Observer const* source);

    /// Called on a copy when a copy operation is complete. If an observer of the source was copied too, its
    /// copy becomes an observer of this object.
    virtual void updateObservers(ObserverRelationTable const& table);

    /// Notifies the observers of the second list before a change.
    /// @param originator the object that makes the change; may be null
    virtual void notifyToChange(Observer* originator);

    /// Notifies the observers of the first list after a change.
    /// @param originator the object that made the change; may be null
    virtual void notifyChanged(Observer* originator);

    /// Called on an observer after `subject` has changed. The base class does nothing.
    virtual void changedNotify(Observer* subject, Observer* originator);

    /// Called on an observer before `subject` changes. To veto the change, add an InfoFailed record to the
    /// subject by addNotifyInfo(). The base class does nothing.
    virtual void toChangeNotify(Observer* subject, Observer* originator);

    /// Looks up an object by its name, starting at this object. The base class returns null.
    [[nodiscard]] virtual Observer* inqObserver(Bv_1_1::String const& name);

    /// The object's name. The base class returns NIL.
    [[nodiscard]] virtual Bv_1_1::String getName() const;

    /// The path of the object, to be shown to users. The base class returns the name.
    [[nodiscard]] virtual Bv_1_1::String inqDisplayPath() const;

    /// The path of the object as names. The base class returns the name.
    [[nodiscard]] virtual Bv_1_1::String inqObjPath() const;

    /// Whether the object is in the host's tree of models. The base class returns false.
    [[nodiscard]] virtual bool isPartOfMainTree() const;

    /// Reads the object from a stream in a model format. The base class reads nothing.
    /// @return a StatusCode, 0 for success
    virtual int readFrom(std::istream* stream, ReadContextBase* context);

    /// Writes the object to a stream in a model format. The base class writes nothing.
    /// @return a StatusCode, 0 for success
    virtual int writeTo(std::ostream* stream, WriteContextBase* context) const;

    /// Called on an observer when `subject` is being destroyed. The observer has already been removed from
    /// its lists. The base class does nothing.
    /// @param subject only its address may be used
    virtual void informDelete(Observer* subject) noexcept;

    /// The container that this object belongs to, or null. The base class returns null.
    [[nodiscard]] virtual AttrContainer* lookupObject();

    /// Adds an observer to one of this object's lists. The list does not own it.
    /// @return false if it is null or already in the list, or if one of the two objects is being destroyed
    bool addObserver(Observer* observer, Notice notice = Notice::Changed);

    /// Reverts addObserver().
    /// @return false if the observer was not in the list
    bool removeObserver(Observer* observer, Notice notice = Notice::Changed) noexcept;

    /// Adds a notification record to this object, which takes a reference. Ignores null.
    void addNotifyInfo(Bv_1_1::ObserverInfo* info);

    /// Removes one notification record.
    /// @param release whether to free the memory of the list if it is then empty
    /// @return false if there is no such record
    bool removeNotifyInfo(Bv_1_1::ObserverInfo const* info, bool release);

    /// Removes all notification records.
    /// @param release whether to free the memory of the list
    void removeNotifyInfos(bool release);

    /// The newest notification record whose class is `type` or derives from it, or null.
    [[nodiscard]] Bv_1_1::ObserverInfo* lookupNotifyInfo(Bv_1_1::oVClass const* type) const;

    /// Notifies the observers of one of this object's lists, in their order: by toChangeNotify() for the
    /// second list, by changedNotify() for any other list. An observer that is added during the call is not
    /// notified by it.
    void notifySequence(Observer* originator, ObserverList* list);

    /// The extra parameters, or null if the object has not needed them yet.
    [[nodiscard]] ParamsEx* parEx() const noexcept { return params_.get(); }

protected:
    Observer() noexcept;
    /// The copy has neither observers nor notification records, and observes nothing.
    Observer(Observer const& other) noexcept;
    /// Copies nothing: observers and notification records of both objects are unchanged.
    Observer& operator=(Observer const& other) noexcept;
    ~Observer() override;

    /// Ends all relations: calls informDelete() on the observers, leaves the lists of all subjects, and
    /// removes the notification records. Call it in the destructor of a derived class that must do more after
    /// that.
    void endRelations() noexcept;

    /// Removes the notification records, except those whose class is `type` or derives from it. If `type` is
    /// null, removes all.
    void removeNotifyInfosExcept(Bv_1_1::oVClass const* type) noexcept;

private:
    ROAMSCAN_NO_EXPORT ParamsEx& makeParams();
    [[nodiscard]] ROAMSCAN_NO_EXPORT ObserverList& listOf(Notice notice) const noexcept;
    ROAMSCAN_NO_EXPORT void detachObservers(ObserverList& list) noexcept;

    std::unique_ptr<ParamsEx> params_;
};

} // namespace oV
