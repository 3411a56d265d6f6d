// CObject, the root of the framework's classes, and run-time class information.
//
// A class that wants to be recognised at run time writes DECLARE_DYNAMIC(CName) in its
// declaration and IMPLEMENT_DYNAMIC(CName, CBase) in its source; the _DYNCREATE pair lets
// CRuntimeClass::CreateObject make one as well.
//
//   if (object->IsKindOf(RUNTIME_CLASS(CFileException))) ...
//   auto* error = DYNAMIC_DOWNCAST(CFileException, object);   // null when it is none
//
// The information is found by functions rather than by the address of data, so that it holds
// across the boundary of a DLL.

#pragma once

#include "platform/types.h"

class CObject;

// What is known of a class at run time. One object per class, for the life of the process.
struct TLVN_API CRuntimeClass {
    // The class's name.
    const char* m_lpszClassName;
    int m_nObjectSize;                     // in bytes
    CObject* (*m_pfnCreateObject)();       // null when the class cannot be made by name
    CRuntimeClass* (*m_pfnGetBaseClass)(); // null for CObject

    // A new object, owned by the caller, or null when the class is not _DYNCREATE or there is
    // no memory.
    CObject* CreateObject();
    // True also for the class itself.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;
};

// Has run-time class information and is not copied.
class TLVN_API CObject {
public:
    virtual ~CObject();
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    // What is known of this class, and of the object's.
    static CRuntimeClass* GetThisClass();
    virtual CRuntimeClass* GetRuntimeClass() const;
    // Nonzero when the object is of `runtimeClass` or of a class derived from it.
    BOOL IsKindOf(const CRuntimeClass* runtimeClass) const;

protected:
    CObject() = default;
};

namespace tlvn {

// The object as a T; null when it is none.
template <class T>
T* DynamicDowncast(CObject* object)
{
    return object != nullptr && object->IsKindOf(T::GetThisClass()) ? static_cast<T*>(object)
                                                                    : nullptr;
}
template <class T>
const T* DynamicDowncast(const CObject* object)
{
    return object != nullptr && object->IsKindOf(T::GetThisClass()) ? static_cast<const T*>(object)
                                                                    : nullptr;
}

} // namespace tlvn

#define RUNTIME_CLASS(className) (className::GetThisClass())
#define DYNAMIC_DOWNCAST(className, object) (::tlvn::DynamicDowncast<className>(object))
#define STATIC_DOWNCAST(className, object) (static_cast<className*>(object))

#define DECLARE_DYNAMIC(className)                                                                 \
public:                                                                                            \
    static CRuntimeClass* GetThisClass();                                                          \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(className)                                                               \
    DECLARE_DYNAMIC(className)                                                                     \
    static CObject* CreateObject();

#define TLVN_IMPLEMENT_RUNTIMECLASS(className, baseName, create)                                   \
    CRuntimeClass* className::GetThisClass()                                                       \
    {                                                                                              \
        static CRuntimeClass runtimeClass = {#className, static_cast<int>(sizeof(className)),      \
                                             create, &baseName::GetThisClass};                     \
        return &runtimeClass;                                                                      \
    }                                                                                              \
    CRuntimeClass* className::GetRuntimeClass() const                                              \
    {                                                                                              \
        return GetThisClass();                                                                     \
    }

#define IMPLEMENT_DYNAMIC(className, baseName)                                                     \
    TLVN_IMPLEMENT_RUNTIMECLASS(className, baseName, nullptr)

#define IMPLEMENT_DYNCREATE(className, baseName)                                                   \
    CObject* className::CreateObject()                                                             \
    {                                                                                              \
        return new className;                                                                      \
    }                                                                                              \
    TLVN_IMPLEMENT_RUNTIMECLASS(className, baseName, &className::CreateObject)
