# The libraries a host links: libvexplot (the control and everything below
# it, no Qt) and libvexplot-widget (the Qt widget, on top of libvexplot).
# Each is made from the object files of the static subsystem libraries it
# stands on, found by walking their link dependencies, so a new subsystem
# library joins the right one without a change here.

# Walks the link dependencies of `root`: the static vexplot_* libraries go
# to ${static_out}, everything else that is linked (system libraries,
# imported targets) to ${external_out}. Targets in `skip` (and below them)
# are left out.
function(vexplot_link_closure root skip static_out external_out)
  set(pending ${root})
  set(seen ${skip})
  set(static_libs)
  set(externals)
  while(pending)
    list(POP_FRONT pending item)
    string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" item "${item}")
    if(item IN_LIST seen OR item MATCHES "^\\$<")
      continue()
    endif()
    list(APPEND seen ${item})
    if(TARGET ${item} AND item MATCHES "^vexplot_")
      get_target_property(type ${item} TYPE)
      if(type STREQUAL "STATIC_LIBRARY")
        list(APPEND static_libs ${item})
        get_target_property(deps ${item} LINK_LIBRARIES)
        if(deps)
          list(APPEND pending ${deps})
        endif()
      endif()
      get_target_property(deps ${item} INTERFACE_LINK_LIBRARIES)
      if(deps)
        list(APPEND pending ${deps})
      endif()
    else()
      list(APPEND externals ${item})
    endif()
  endwhile()
  set(${static_out} ${static_libs} PARENT_SCOPE)
  set(${external_out} ${externals} PARENT_SCOPE)
endfunction()

# A shared library named `output` from the objects of `root`'s static closure.
function(vexplot_shared_library target output root skip)
  vexplot_link_closure("${root}" "${skip}" static_libs externals)
  set(objects)
  foreach(lib IN LISTS static_libs)
    list(APPEND objects $<TARGET_OBJECTS:${lib}>)
  endforeach()
  add_library(${target} SHARED ${objects})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${output}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINKER_LANGUAGE CXX
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib
    INSTALL_RPATH "$ORIGIN")
  target_link_libraries(${target} PRIVATE ${externals})
  target_include_directories(${target} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(${target} INTERFACE cxx_std_20)
endfunction()

vexplot_shared_library(vexplot_shared vexplot "vexplot_control;vexplot_setup" "")
set_target_properties(vexplot_shared PROPERTIES EXPORT_NAME Control)
add_library(Vexplot::Control ALIAS vexplot_shared)

vexplot_link_closure("vexplot_control;vexplot_setup" "" vexplot_control_closure unused)
vexplot_shared_library(vexplot_widget_shared vexplot-widget vexplot_qt "${vexplot_control_closure}")
target_link_libraries(vexplot_widget_shared PUBLIC vexplot_shared Qt6::Widgets Qt6::Gui)
set_target_properties(vexplot_widget_shared PROPERTIES EXPORT_NAME Widget)
add_library(Vexplot::Widget ALIAS vexplot_widget_shared)
