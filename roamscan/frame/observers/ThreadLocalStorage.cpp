#include <roamscan/frame/observers/ThreadLocalStorage.h>

namespace oV
{

namespace
{

struct Slot
{
    ThreadDataType data;
    bool made = false;
};

// Needs neither construction nor destruction, so it can be used at any time in a thread's life.
constinit thread_local Slot slotOfThread;

} // namespace

ThreadLocalStorage& ThreadLocalStorage::the() noexcept
{
    static constinit ThreadLocalStorage storage;
    return storage;
}

ThreadDataType* ThreadLocalStorage::getData() const noexcept
{
    Slot& slot = slotOfThread;
    return slot.made ? &slot.data : nullptr;
}

ThreadDataType& ThreadLocalStorage::makeData() const noexcept
{
    Slot& slot = slotOfThread;
    slot.made = true;
    return slot.data;
}

} // namespace oV
