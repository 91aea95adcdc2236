#include "platform/network/HttpRequest.h"

#include "support/Failure.h"
#include "support/Fixture.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

using HttpRequestTest = ProgramTest;

TEST_F(HttpRequestTest, AServerWhoseAnswerNeverEndsIsGivenUp) {
  for (const char* behaviour : {"silent", "endless", "drip", "headers"}) {
    const LoopbackServer server("http", folder.Path(), {behaviour});
    HttpRequest request;
    request.Patience.answering = std::chrono::milliseconds(1000);
    const auto start = std::chrono::steady_clock::now();
    request.Open("POST", "http://" + server.Host() + "/x");
    const RuntimeError failure = FailureOf([&] { request.Send("body"); });
    EXPECT_EQ(failure.Number(), kDeviceError) << behaviour;
    EXPECT_NE(failure.Description().find(server.Host()), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10)) << behaviour;
    EXPECT_LE(request.ResponseText().size(), std::size_t{1} << 20) << behaviour;
  }
}

}  // namespace tarvolinex
