# Runs the build's updater check as configuring does, for VendelMacBundleTest.cmake to watch it stop or go on.
# cmake -DRELEASE=<ON|OFF> -DFEED=<url> -DKEY=<key> -P tests/cmake/VendelMacBundleCheck.cmake
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/VendelMacBundle.cmake)
vendel_check_updater_settings(RELEASE "${RELEASE}" FEED_URL "${FEED}" PUBLIC_KEY "${KEY}")
