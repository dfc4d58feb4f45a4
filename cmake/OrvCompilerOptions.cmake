# Warnings, source-relative __FILE__ and the optional sanitizer build, for every target of the tree.
add_compile_options(-Wall -Wextra)
# Assertion messages print the source path relative to the tree, whatever folder it was built in.
add_compile_options("-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=")

if(ORV_SANITIZE)
  set(orv_sanitize_flags "-fsanitize=${ORV_SANITIZE}" -fno-omit-frame-pointer)
  if(ORV_SANITIZE MATCHES "undefined")
    list(APPEND orv_sanitize_flags -fno-sanitize-recover=undefined)
  endif()
  add_compile_options(${orv_sanitize_flags})
  add_link_options(${orv_sanitize_flags})
endif()
