#include "ControlServer.h"

#include "Access.h"

namespace devserver {

CControlServer::CControlServer(std::string token, Handler handler)
    : m_server(
          "control", kMaxBodyBytes,
          [expected = "Bearer " + token](const WebRequest& request) -> std::optional<WebAnswer> {
              if (SameToken(request.Header("authorization").value_or(""), expected)) {
                  return std::nullopt;
              }
              return CWebServer::Refusal(401, "Authorization: must be Bearer and the token");
          },
          [handler = std::move(handler)](const WebRequest& request) {
              const ControlAnswer answer = handler({request.method, request.path, request.after, request.body});
              WebAnswer written;
              written.status = answer.status;
              written.body = WriteJson(answer.body);
              return written;
          }) {}

}  // namespace devserver
