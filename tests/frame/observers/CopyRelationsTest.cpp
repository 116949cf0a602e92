#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/observers/BlockUpdateObservers.h>
#include <roamscan/frame/observers/Observer.h>
#include <roamscan/frame/observers/ObserverRelationTable.h>
#include <roamscan/frame/observers/PreserveObserverRelation.h>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <thread>

namespace
{

using Bv_1_1::SmartPtr;
using oV::BlockUpdateObservers;
using oV::Observer;
using oV::ObserverRelationTable;
using oV::PreserveObserverRelation;
using Notice = oV::Observer::Notice;

class Node : public Observer
{
public:
    void updateObservers(ObserverRelationTable const& table) override
    {
        ++updates;
        sizeAtUpdate = table.size();
        referencesAtUpdate = table.referenceCount();
        Observer::updateObservers(table);
    }

    int updates = 0;
    std::size_t sizeAtUpdate = 0;
    std::uint32_t referencesAtUpdate = 0;
};

SmartPtr<Node> node()
{
    return SmartPtr<Node>(new Node);
}

TEST(ObserverRelationTable, FindsCopiesBySourceAndSourcesByCopy)
{
    auto const source = node();
    auto const copy = node();
    ObserverRelationTable table;
    EXPECT_EQ(table.copyOf(source.get()), nullptr);
    EXPECT_EQ(table.sourceOf(copy.get()), nullptr);
    table.enter(source.get(), copy.get());
    EXPECT_EQ(table.copyOf(source.get()), copy.get());
    EXPECT_EQ(table.sourceOf(copy.get()), source.get());
    EXPECT_EQ(table.copyOf(copy.get()), nullptr);
    EXPECT_EQ(table.size(), 1U);
    table.enter(nullptr, copy.get());
    table.enter(source.get(), nullptr);
    EXPECT_EQ(table.size(), 1U);
}

TEST(ObserverRelationTable, ALaterCopyReplacesAnEarlierOne)
{
    auto const source = node();
    auto const first = node();
    auto const second = node();
    ObserverRelationTable table;
    table.enter(source.get(), first.get());
    table.enter(source.get(), second.get());
    EXPECT_EQ(table.copyOf(source.get()), second.get());
    EXPECT_EQ(table.sourceOf(first.get()), nullptr);
    EXPECT_EQ(table.sourceOf(second.get()), source.get());
}

TEST(ObserverRelationTable, ClearTableEmptiesIt)
{
    auto const source = node();
    auto const copy = node();
    ObserverRelationTable table;
    table.enter(source.get(), copy.get());
    table.clearTable();
    EXPECT_EQ(table.size(), 0U);
    EXPECT_EQ(table.sourceOf(copy.get()), nullptr);
}

TEST(ObserverRelationTable, ForgetsAnObjectAsSourceAndAsCopy)
{
    auto const first = node();
    auto const second = node();
    auto const third = node();
    ObserverRelationTable table;
    table.enter(first.get(), second.get());
    table.enter(second.get(), third.get());
    table.forget(second.get());
    EXPECT_EQ(table.copyOf(first.get()), nullptr);
    EXPECT_EQ(table.sourceOf(third.get()), nullptr);
    EXPECT_EQ(table.size(), 0U);
}

TEST(SrcToCopyTable, IsNullUnlessACopyOperationIsUnderWay)
{
    EXPECT_EQ(Observer::srcToCopyTable(), nullptr);
    {
        PreserveObserverRelation const operation;
        ASSERT_NE(Observer::srcToCopyTable(), nullptr);
        EXPECT_EQ(Observer::srcToCopyTable(), operation.table());
        EXPECT_EQ(operation.table()->referenceCount(), 1U);
        {
            PreserveObserverRelation const joined;
            EXPECT_EQ(joined.table(), operation.table());
            EXPECT_EQ(operation.table()->referenceCount(), 2U);
        }
        EXPECT_EQ(Observer::srcToCopyTable(), operation.table());
    }
    EXPECT_EQ(Observer::srcToCopyTable(), nullptr);
}

TEST(SrcToCopyTable, EachThreadHasItsOwnOperation)
{
    PreserveObserverRelation const operation;
    std::thread([] { EXPECT_EQ(Observer::srcToCopyTable(), nullptr); }).join();
}

TEST(SrcToCopyTable, ADestroyedObjectIsRemovedFromTheTable)
{
    PreserveObserverRelation const operation;
    auto const source = node();
    auto copy = node();
    operation.table()->enter(source.get(), copy.get());
    copy.reset();
    EXPECT_EQ(operation.table()->copyOf(source.get()), nullptr);
    EXPECT_EQ(operation.table()->size(), 0U);
}

TEST(PreserveObserverRelation, ClearsTheTableWhenTheLastScopeEnds)
{
    auto const source = node();
    auto const copy = node();
    ObserverRelationTable table;
    std::optional<PreserveObserverRelation> outer(std::in_place, &table);
    {
        PreserveObserverRelation const inner(&table);
        EXPECT_EQ(table.referenceCount(), 2U);
        table.enter(source.get(), copy.get());
    }
    EXPECT_EQ(table.size(), 1U);
    outer.reset();
    EXPECT_EQ(table.referenceCount(), 0U);
    EXPECT_EQ(table.size(), 0U);
}

TEST(PreserveObserverRelation, WithoutATableDoesNothing)
{
    PreserveObserverRelation const scope(nullptr);
    EXPECT_EQ(scope.table(), nullptr);
    EXPECT_EQ(Observer::srcToCopyTable(), nullptr);
}

TEST(BlockUpdateObservers, UpdatesItsObjectWhenTheLastScopeEnds)
{
    auto const source = node();
    auto const outer = node();
    auto const inner = node();
    ObserverRelationTable table;
    {
        BlockUpdateObservers const first(&table, outer.get());
        EXPECT_EQ(table.blockCount(), 1U);
        EXPECT_EQ(table.referenceCount(), 1U);
        {
            BlockUpdateObservers const second(&table, inner.get());
            EXPECT_EQ(table.blockCount(), 2U);
            EXPECT_EQ(table.referenceCount(), 2U);
            table.enter(source.get(), outer.get());
        }
        EXPECT_EQ(inner->updates, 0);
        EXPECT_EQ(outer->updates, 0);
    }
    EXPECT_EQ(inner->updates, 0);
    EXPECT_EQ(outer->updates, 1);
    EXPECT_EQ(outer->sizeAtUpdate, 1U);
    EXPECT_EQ(outer->referencesAtUpdate, 1U); // the update is before the reference is released
    EXPECT_EQ(table.size(), 0U);
    EXPECT_EQ(table.blockCount(), 0U);
}

TEST(BlockUpdateObservers, WithoutAnObjectOrATableUpdatesNothing)
{
    auto const object = node();
    ObserverRelationTable table;
    {
        BlockUpdateObservers const scope(&table, nullptr);
    }
    {
        BlockUpdateObservers const scope(nullptr, object.get());
    }
    EXPECT_EQ(object->updates, 0);
    EXPECT_EQ(table.referenceCount(), 0U);
}

TEST(BlockUpdateObservers, UpdatesNothingWhileAnExceptionPassesThrough)
{
    auto const object = node();
    ObserverRelationTable table;
    try {
        BlockUpdateObservers const scope(&table, object.get());
        throw std::runtime_error("failed copy");
    } catch (std::runtime_error const&) {
    }
    EXPECT_EQ(object->updates, 0);
    EXPECT_EQ(table.referenceCount(), 0U);
    EXPECT_EQ(table.blockCount(), 0U);
}

TEST(BlockUpdateObservers, UpdatesInAScopeThatBeginsWhileAnExceptionPassesThrough)
{
    struct CopyAtEnd
    {
        ObserverRelationTable& table;
        Node& object;
        ~CopyAtEnd() { BlockUpdateObservers const scope(&table, &object); }
    };
    auto const object = node();
    ObserverRelationTable table;
    try {
        CopyAtEnd const atEnd{table, *object};
        throw std::runtime_error("failed elsewhere");
    } catch (std::runtime_error const&) {
    }
    EXPECT_EQ(object->updates, 1);
}

TEST(CopyRelations, ObserversAmongTheSourcesAreObserversAmongTheCopies)
{
    auto const source = node();
    auto const copied = node();
    auto const notCopied = node();
    source->addObserver(copied.get(), Notice::Changed);
    source->addObserver(notCopied.get(), Notice::Changed);
    source->addObserver(copied.get(), Notice::ToChange);
    auto const copy = node();
    auto const copyOfObserver = node();
    ObserverRelationTable table;
    table.enter(source.get(), copy.get());
    table.enter(copied.get(), copyOfObserver.get());
    copy->updateObservers(table);
    ASSERT_NE(copy->parEx(), nullptr);
    EXPECT_EQ(copy->parEx()->changed.size(), 1U);
    EXPECT_TRUE(copy->parEx()->changed.contains(copyOfObserver.get()));
    EXPECT_TRUE(copy->parEx()->toChange.contains(copyOfObserver.get()));
    EXPECT_EQ(copy->parEx()->flags, 4U);
    copyOfObserver->updateObservers(table);
    EXPECT_TRUE(copyOfObserver->parEx()->changed.empty());
}

} // namespace
