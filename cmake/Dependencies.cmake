# Everything comes from Debian 12's packages (see packages/build.txt).

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Network DBus Qml Quick QuickControls2 Svg)
find_package(PkgConfig REQUIRED)
find_package(ICU REQUIRED COMPONENTS uc i18n data)
find_package(CURL 7.88 REQUIRED)
find_package(OpenSSL 3.0 REQUIRED COMPONENTS Crypto)
pkg_check_modules(GST REQUIRED IMPORTED_TARGET
    gstreamer-1.0>=1.22 gstreamer-base-1.0 gstreamer-app-1.0 gstreamer-audio-1.0 gstreamer-pbutils-1.0)
pkg_check_modules(PULSE REQUIRED IMPORTED_TARGET libpulse libpulse-simple)

if(VELARIN_TESTS)
    find_package(GTest REQUIRED)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test QuickTest)
    include(GoogleTest)
endif()
if(VELARIN_BENCH)
    find_package(benchmark REQUIRED)
endif()
