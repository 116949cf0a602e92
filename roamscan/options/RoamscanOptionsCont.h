#pragma once

#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/AttrDefinition.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeyTable.h>
#include <roamscan/frame/platform/Export.h>

#include <array>
#include <map>
#include <vector>

namespace oV::Roamscan
{

/// The container of the options of all plug-ins.
///
/// Each option is a custom attribute, which is added at run time under an arbitrary name. Two lists of
/// strings, which are static attributes, contain the names and the types of the options, so that a saved
/// container can be rebuilt:
/// - Before saving, updateToCurrentOptions() updates the lists.
/// - After reading, initializeCustomAttributes() creates the options of the lists.
///
/// Thread safety: use the live container, which RoamscanOptions owns, only while holding
/// RoamscanOptions::getLock(). For any other container, concurrent reads are safe and a write needs exclusive
/// access.
class ROAMSCAN_EXPORT RoamscanOptionsCont : public AttrContainer
{
public:
    /// A container without attributes. Call init() with the same arguments afterwards.
    RoamscanOptionsCont(CreateType type, RoamscanOptionsCont const* source);

    /// The record of this class. Its create() creates a container of type Fresh and does not call init().
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// Creates the tables of the names and the definitions of the static attributes. Called when the library
    /// is loaded. Does nothing if they exist.
    static void initStatics();

    /// Reverts initStatics().
    static void clearStatics();

    /// Creates a container if `name` is the name of this class. Does not call init().
    /// @return the container, with a reference count of 0; null for any other name
    [[nodiscard]] static AttrContainer* checkCreateField(Bv_1_1::String const& name);

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;
    /// @return this container
    [[nodiscard]] AttrContainer* lookupObject() override;
    /// @return 2
    [[nodiscard]] unsigned int reservedQuery1() const override;
    /// @return 0xFFFFFFFF
    [[nodiscard]] unsigned int reservedQuery2() const override;
    /// A new container with copies of all attributes.
    /// @param type if it is NoSource, the new container has no options and empty lists
    /// @return the new container, with a reference count of 0
    [[nodiscard]] AttrContainer* duplicate(CreateType type) const override;
    /// Creates the two lists. Without a source, the lists are empty and the container's name is that of the
    /// class. With a source, all attributes are copies of those of `source`.
    /// @param type if it is NoSource, nothing is copied
    /// @param source may be null
    bool init(CreateType type, AttrContainer const* source) override;
    /// The same as in AttrContainer, but looks among the two lists first.
    [[nodiscard]] unsigned int getAttrToken(Bv_1_1::String const& name) const override;
    /// @overload
    [[nodiscard]] Bv_1_1::String getAttrName(unsigned int token) const override;
    /// @overload
    [[nodiscard]] AttrDefinition const* getAttrDefinition(unsigned int token) const override;
    /// Does nothing.
    void reservedHook() override;
    /// @return false
    [[nodiscard]] bool reservedFlag() const override;

    /// A copy of the list of the options' names. Empty before init().
    /// @note Takes no lock. Hold RoamscanOptions::getLock() if the container is the live one.
    [[nodiscard]] std::vector<Bv_1_1::String> OptionsNames() const;
    /// A copy of the list of the options' types, each the name of an attribute's class record.
    /// @copydetails OptionsNames()
    [[nodiscard]] std::vector<Bv_1_1::String> OptionsTypes() const;
    /// Replaces the list of names. Does nothing before init().
    void OptionsNames(std::vector<Bv_1_1::String> const& names);
    /// Replaces the list of types. Does nothing before init().
    void OptionsTypes(std::vector<Bv_1_1::String> const& types);

    /// Creates the options of the two lists, in their order. Call it on a container that was just read.
    /// Unknown types are skipped. Does nothing if the lists differ in length.
    void initializeCustomAttributes();

    /// Sets the two lists to the names and the types of the current options. Call it before saving.
    /// @note The lists are replaced one after the other, so another thread may see lists that do not match.
    void updateToCurrentOptions();

protected:
    /// The number of rows of `attrDefs`, including the row that ends the table.
    static constexpr std::size_t definitionCount = 3;

    /// The definitions of the two lists.
    static std::array<AttrDefinition, definitionCount> attrDefs;
    /// Token to name of the static attributes; null until initStatics().
    static KeyTable* attrNames;
    /// Token to definition of the static attributes; null until initStatics().
    static std::map<unsigned int const, AttrDefinition const*>* attrDefMap;

    ~RoamscanOptionsCont() override;

private:
    class ClassCreator;
};

} // namespace oV::Roamscan
