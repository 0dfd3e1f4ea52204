#include "ZoEventSystem.h"

ZoEventSystem* ZoEventSystem::instance()
{
    static ZoEventSystem system;
    return &system;
}
