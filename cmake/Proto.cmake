# zr_add_proto(<target> <schema>...): a static library of the code that protoc makes of proto/<schema>.proto.
# Each process has exactly one such library per schema.
function(zr_add_proto target)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target})
    file(MAKE_DIRECTORY ${folder})
    set(generated)
    foreach(schema IN LISTS ARGN)
        add_custom_command(
            OUTPUT ${folder}/${schema}.pb.cc ${folder}/${schema}.pb.h
            COMMAND protobuf::protoc --cpp_out=${folder} -I ${CMAKE_SOURCE_DIR}/proto
                    ${CMAKE_SOURCE_DIR}/proto/${schema}.proto
            DEPENDS ${CMAKE_SOURCE_DIR}/proto/${schema}.proto
            VERBATIM)
        list(APPEND generated ${folder}/${schema}.pb.cc)
    endforeach()
    add_library(${target} STATIC ${generated})
    target_include_directories(${target} SYSTEM PUBLIC ${folder})
    target_link_libraries(${target} PUBLIC protobuf::libprotobuf)
endfunction()
