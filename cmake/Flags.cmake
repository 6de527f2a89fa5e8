# Flags that every target of this project shares.
add_library(tslbl_flags INTERFACE)
target_compile_options(tslbl_flags INTERFACE
  -Wall -Wextra -Wconversion -Wshadow
  # A fused multiply-add rounds once where the source rounds twice: off, so that
  # numbers do not depend on the compiler or the machine.
  -ffp-contract=off)
if(TSLBL_WERROR)
  target_compile_options(tslbl_flags INTERFACE -Werror)
endif()
if(TSLBL_SANITIZE)
  target_compile_options(tslbl_flags INTERFACE
    -fsanitize=${TSLBL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tslbl_flags INTERFACE -fsanitize=${TSLBL_SANITIZE})
endif()
