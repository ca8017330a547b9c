#pragma once

/// How a test speaks to the slot in the driver's module: by messages without a body.
namespace ad_driver {

constexpr unsigned int kSearch = 990'001;
constexpr unsigned int kCheck = 990'002;  // of kCheckedAd
constexpr unsigned int kShow = 990'003;   // begins the exposure of the list's first ad
constexpr unsigned int kClick = 990'004;
constexpr unsigned int kEnd = 990'005;  // ends the exposure

constexpr char kCheckedAd[] = "703";

/// Names the file in which the slot notes each answer, a line each.
constexpr char kFileVariable[] = "ZR_AD_DRIVER_FILE";

}  // namespace ad_driver
