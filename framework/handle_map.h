// The framework's objects by the handles of the window system.
//
// A permanent object is one that a program made and attached to a handle. For a handle without
// one, FromHandle makes a temporary object; it is good until the thread that asked is back in
// its message loop with nothing to do (tlvn::DeleteTemporaryObjects), or until Forget.

#pragma once

#include "platform/types.h"

#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>

namespace tlvn {

template <class Object, class Handle>
class HandleMap {
public:
    void Add(Handle handle, Object* object)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_permanent[handle] = object;
    }
    // Only when the handle is that object's.
    void Remove(Handle handle, const Object* object)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_permanent.find(handle);
        if (found != m_permanent.end() && found->second == object)
            m_permanent.erase(found);
    }
    Object* FindPermanent(Handle handle) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_permanent.find(handle);
        return found != m_permanent.end() ? found->second : nullptr;
    }
    // The permanent object, or a temporary one, which make() makes when there is none yet.
    template <class Make>
    Object* FindOrMake(Handle handle, Make make)
    {
        if (Object* const permanent = FindPermanent(handle); permanent != nullptr)
            return permanent;
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::unique_ptr<Object>& temporary = m_temporary[{std::this_thread::get_id(), handle}];
        if (temporary == nullptr)
            temporary.reset(make());
        return temporary.get();
    }
    // Deletes this thread's temporary object of the handle.
    void Forget(Handle handle)
    {
        std::unique_ptr<Object> removed;
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_temporary.find({std::this_thread::get_id(), handle});
        if (found == m_temporary.end())
            return;
        removed = std::move(found->second);
        m_temporary.erase(found);
    }
    // Deletes all of this thread's temporary objects.
    void ForgetAll()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::erase_if(m_temporary, [](const auto& entry) {
            return entry.first.first == std::this_thread::get_id();
        });
    }

private:
    mutable std::mutex m_mutex;
    std::unordered_map<Handle, Object*> m_permanent;
    std::map<std::pair<std::thread::id, Handle>, std::unique_ptr<Object>> m_temporary;
};

} // namespace tlvn
