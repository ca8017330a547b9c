#pragma once

namespace devserver {

constexpr const char* kAdSearchPath = "/ad/search";
constexpr const char* kAdCheckPath = "/ad/check";
constexpr const char* kAdExposePath = "/ad/expose";
constexpr const char* kReportPath = "/report/events";
constexpr const char* kPicturesPath = "/pictures/";  // followed by a picture's name
constexpr const char* kLinkPath = "/link/";          // followed by a link id

}  // namespace devserver
