# AddressSanitizer and UndefinedBehaviorSanitizer for the whole build. UBSan
# is made fatal so that CTest sees a report as a failed test.
if(VEXPLOT_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
