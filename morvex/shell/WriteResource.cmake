# cmake -D LIST=... -D HEADER=... -D RESOURCE=... -P WriteResource.cmake
#
# Writes the property list's bytes as source of the resource compiler. What the resource is called
# comes from the header, and so does the size: an object file's section may end in padding.
file(READ ${HEADER} header)

function(take name variable)
  if(NOT header MATCHES "${name}(\\[\\])? = \"?([A-Za-z0-9]+)")
    message(FATAL_ERROR "${HEADER} has no ${name}")
  endif()
  set(${variable} ${CMAKE_MATCH_2} PARENT_SCOPE)
endfunction()

take(kPropertyListResourceType type)
take(kPropertyListResourceId id)
take(kPropertyListLanguage language)
take(kPropertyListSize size)

file(READ ${LIST} bytes LIMIT ${size} HEX)
string(LENGTH "${bytes}" digits)
math(EXPR expected "2 * ${size}")
if(NOT digits EQUAL expected)
  message(FATAL_ERROR "${LIST} has not ${size} bytes")
endif()
# A language is ten bits of language and the country above them.
math(EXPR major "${language} & 1023")
math(EXPR minor "${language} >> 10")
string(REGEX REPLACE "(..)(..)" "0x\\2\\1," words "${bytes}") # words, low byte first
string(REGEX REPLACE ",$" "" words "${words}")
file(WRITE ${RESOURCE}
  "LANGUAGE ${major}, ${minor}\n${id} ${type}\nBEGIN\n${words}\nEND\n")
