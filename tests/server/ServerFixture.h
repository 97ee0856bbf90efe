// A session against a server of mocks that lets everybody log on.
#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "server/FakeBinding.h"
#include "server/UQuoraneSession.h"
#include "support/FakeSystemServices.h"

class TServerTest : public testing::Test {
protected:
    TServerTest() {
        using testing::_;
        using testing::Return;
        Classes.Register(Quorane_TLB::CLASS_QuoraneServerFactory, ServerFactory);
        ON_CALL(*ServerFactory, Create1(_)).WillByDefault(Return(Server));
        ON_CALL(*Server, login(_, _)).WillByDefault(Return(Session));
        ON_CALL(*Server, Get_ServerVersion()).WillByDefault(Return(u"7.1"));
    }

    TFakeSystemServices System;
    TFakeClasses Classes;
    std::shared_ptr<testing::NiceMock<Quorane_TLB::TMockQuoraneServerFactory>> ServerFactory =
        MakeMock<Quorane_TLB::TMockQuoraneServerFactory>();
    std::shared_ptr<testing::NiceMock<Quorane_TLB::TMockQuoraneServer>> Server =
        MakeMock<Quorane_TLB::TMockQuoraneServer>();
    std::shared_ptr<testing::NiceMock<Quorane_TLB::TMockSession>> Session =
        MakeMock<Quorane_TLB::TMockSession>();
};
