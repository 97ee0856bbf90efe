// The common root of the services that a host offers.
#pragma once

class IHostService {
public:
    virtual ~IHostService();

    IHostService(const IHostService&) = delete;
    IHostService& operator=(const IHostService&) = delete;

protected:
    IHostService() = default;
};
