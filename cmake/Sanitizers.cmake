# Instruments everything that is built here, SQLite included: a report inside it is a report about our calls.
if(MARNOCK_SANITIZE)
  add_compile_options(-fsanitize=${MARNOCK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${MARNOCK_SANITIZE})
  if(MARNOCK_SANITIZE MATCHES thread AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # Asio's fences, which g++ says it does not model; no false race has been seen from them.
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-tsan>)
  endif()
endif()
