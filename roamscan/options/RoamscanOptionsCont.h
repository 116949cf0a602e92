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
/// Each option is a custom attribute, added at run time under a name of any text. Two lists of strings, which
/// are static attributes, hold the names and the types of the options, so that a saved container can be
/// rebuilt:
/// - Before saving, updateToCurrentOptions() brings the lists up to date.
/// - After reading, initializeCustomAttributes() makes the options that the lists name.
///
/// RoamscanOptions owns the one live container and its lock. A container that is not the live one is for many
/// readers or one writer.
class ROAMSCAN_EXPORT RoamscanOptionsCont : public AttrContainer
{
public:
    /// A container without attributes; init() makes those of the class. Both arguments are those of init().
    RoamscanOptionsCont(CreateType type, RoamscanOptionsCont const* source);

    /// The record of this class. Its create() makes a container of type Fresh, without init().
    [[nodiscard]] static Bv_1_1::oVClass const* Class();

    /// Sets up the tables of the static attributes' names and definitions. Called when the library is loaded;
    /// does nothing if they are there.
    static void initStatics();

    /// Undoes initStatics().
    static void clearStatics();

    /// A new container, without init(), if `name` is the name of this class.
    /// @return without a reference; null for any other name
    [[nodiscard]] static AttrContainer* checkCreateField(Bv_1_1::String const& name);

    [[nodiscard]] Bv_1_1::oVClass const* getClassType() const override;
    /// @return this container
    [[nodiscard]] AttrContainer* lookupObject() override;
    /// @return 2
    [[nodiscard]] unsigned int reservedQuery1() const override;
    /// @return 0xFFFFFFFF
    [[nodiscard]] unsigned int reservedQuery2() const override;
    /// A new container with copies of all attributes; with the type NoSource, one as init() makes it without
    /// a source.
    /// @return without a reference
    [[nodiscard]] AttrContainer* duplicate(CreateType type) const override;
    /// Makes the two lists: empty, with the name of the class as the container's name, or with all other
    /// attributes as copies of those of `source`.
    bool init(CreateType type, AttrContainer const* source) override;
    /// The class's own static attributes first, then as AttrContainer does.
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
    /// @note It takes no lock: hold RoamscanOptions::getLock() if another thread may write the live
    /// container.
    [[nodiscard]] std::vector<Bv_1_1::String> OptionsNames() const;
    /// A copy of the list of the options' types, each the name of an attribute's class record.
    /// @copydetails OptionsNames()
    [[nodiscard]] std::vector<Bv_1_1::String> OptionsTypes() const;
    /// Replaces the list of names. Does nothing before init().
    void OptionsNames(std::vector<Bv_1_1::String> const& names);
    /// Replaces the list of types. Does nothing before init().
    void OptionsTypes(std::vector<Bv_1_1::String> const& types);

    /// Makes the options that the two lists name, in their order; for a container that was just read. Types
    /// that are not known are skipped. Does nothing if the lists differ in length.
    void initializeCustomAttributes();

    /// Makes the two lists name the options that there are.
    /// @note The lists are replaced one after the other; in between they may disagree.
    void updateToCurrentOptions();

protected:
    static constexpr std::size_t definitionCount = 3;

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
