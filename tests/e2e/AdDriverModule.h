#pragma once

/// Bus messages without a body, by which a test controls the driver module's slot.
namespace ad_driver {

constexpr unsigned int kSearch = 990'001;
constexpr unsigned int kCheck = 990'002;  // of kCheckedAd
constexpr unsigned int kShow = 990'003;   // begins the exposure of the list's first ad
constexpr unsigned int kClick = 990'004;
constexpr unsigned int kEnd = 990'005;  // ends the exposure

constexpr char kCheckedAd[] = "703";

/// Names the file to which the slot appends one line for each answer.
constexpr char kFileVariable[] = "ZR_AD_DRIVER_FILE";

}  // namespace ad_driver
