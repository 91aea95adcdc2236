#include "platform/network/HttpRequest.h"

#include "platform/RuntimeError.h"
#include "support/Fixture.h"
#include "support/LoopbackServer.h"

namespace tarvolinex {

class HttpRequestTest : public ProgramTest {
 protected:
  int NumberOfFailure(const LoopbackServer& server) {
    request.Open("POST", "http://" + server.Host() + "/x");
    try {
      request.Send("body");
      return 0;
    } catch (const RuntimeError& failure) {
      EXPECT_NE(failure.Description().find(server.Host()), std::string::npos);
      return failure.Number();
    }
  }
  HttpRequest request;
};

TEST_F(HttpRequestTest, AServerWhoseAnswerNeverEndsIsGivenUp) {
  for (const char* behaviour : {"silent", "endless", "drip", "headers"}) {
    const LoopbackServer server("http", folder.Path(), {behaviour});
    request.Patience.answering = std::chrono::milliseconds(1000);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(NumberOfFailure(server), kDeviceError) << behaviour;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10)) << behaviour;
    EXPECT_LE(request.ResponseText().size(), std::size_t{1} << 20) << behaviour;
  }
}

}  // namespace tarvolinex
