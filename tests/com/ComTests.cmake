# The component layer's own tests, with a plug-in library to load.
add_library(vexplot_test_plugin MODULE TestPlugin.cpp)
target_include_directories(vexplot_test_plugin PRIVATE ${PROJECT_SOURCE_DIR}/src)
vexplot_warnings(vexplot_test_plugin)
add_library(vexplot_not_a_plugin MODULE NotAPlugin.cpp)

add_executable(com_tests
  ClassRegistryTests.cpp
  ConnectionPointTests.cpp
  GuidTests.cpp
  SafeArrayTests.cpp
  VariantTests.cpp
)
target_link_libraries(com_tests PRIVATE vexplot_com GTest::gtest_main)
target_compile_definitions(com_tests PRIVATE
  VEXPLOT_TEST_PLUGIN_PATH="$<TARGET_FILE:vexplot_test_plugin>"
  VEXPLOT_TEST_NOT_A_PLUGIN_PATH="$<TARGET_FILE:vexplot_not_a_plugin>")
add_dependencies(com_tests vexplot_test_plugin vexplot_not_a_plugin)
vexplot_warnings(com_tests)
gtest_discover_tests(com_tests PROPERTIES ENVIRONMENT "VEXPLOT_REGISTRY=:memory:")
