#include "framework/object.h"

#include <new>

CObject* CRuntimeClass::CreateObject()
{
    if (m_pfnCreateObject == nullptr)
        return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const
{
    for (const CRuntimeClass* step = this;;) {
        if (step == base)
            return TRUE;
        if (step->m_pfnGetBaseClass == nullptr)
            return FALSE;
        step = step->m_pfnGetBaseClass();
    }
}

CObject::~CObject() = default;

CRuntimeClass* CObject::GetThisClass()
{
    static CRuntimeClass runtimeClass = {"CObject", static_cast<int>(sizeof(CObject)), nullptr,
                                         nullptr};
    return &runtimeClass;
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return GetThisClass();
}

BOOL CObject::IsKindOf(const CRuntimeClass* runtimeClass) const
{
    return runtimeClass != nullptr && GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}
