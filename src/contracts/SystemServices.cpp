#include "contracts/SystemServices.h"

#include "contracts/Exceptions.h"

namespace {
ISystemServices* installed = nullptr;
}

ISystemServices::~ISystemServices() = default;

ISystemServices& SystemServices() {
    if (!installed) throw Exception("No system services are set.");
    return *installed;
}

void SetSystemServices(ISystemServices* services) {
    installed = services;
}
