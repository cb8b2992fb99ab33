# The OLE half of the framework.
list(APPEND ole_sources
    Connection.cpp
    OleArguments.cpp
    OleDispatch.cpp
    OleFactory.cpp
    OleTarget.cpp
    OleTypeLib.cpp
    PropExchange.cpp
    Registration.cpp)
