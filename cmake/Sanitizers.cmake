# AddressSanitizer and UndefinedBehaviorSanitizer for the whole build. The
# float checks are not part of -fsanitize=undefined: a double too large for
# the integer it is cast to is undefined behaviour, and a division by zero
# must be reported by the code as an error, never left to produce infinity.
if(TALLYRA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined,float-cast-overflow,float-divide-by-zero
                      -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined,float-cast-overflow,float-divide-by-zero)
endif()
