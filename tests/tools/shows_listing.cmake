# The page PAGE shows the file LISTING as it is.
file(READ ${PAGE} page)
file(READ ${LISTING} listing)
string(FIND "${page}" "${listing}" place)
if(place EQUAL -1)
  message(FATAL_ERROR "${PAGE} doesn't show ${LISTING} as it is")
endif()
