#include "platform/HttpRequest.h"

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

TEST_F(HttpRequestTest, AServerThatFallsSilentIsGivenUp) {
  const LoopbackServer server("http", folder.Path(), {"silent"});
  request.Patience.silent = std::chrono::milliseconds(1000);
  EXPECT_EQ(NumberOfFailure(server), kDeviceError);
}

}  // namespace tarvolinex
