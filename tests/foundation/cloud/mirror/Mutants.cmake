# Does the model test notice what it is there for? Each mutant is the engine with one fault put in,
# and its test passes only if the model says what no longer holds.

# mirror_mutant(name SOURCE file FROM text TO text)
# The text must stand in that source exactly once, so that a mutant never becomes the original.
function(mirror_mutant name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "SOURCE;FROM;TO" "")
    set(source ${PROJECT_SOURCE_DIR}/src/foundation/cloud/mirror/${arg_SOURCE})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    file(READ ${source} original)
    string(REPLACE "${arg_FROM}" "" without "${original}")
    string(LENGTH "${original}" length)
    string(LENGTH "${without}" lengthWithout)
    string(LENGTH "${arg_FROM}" lengthFrom)
    math(EXPR found "(${length} - ${lengthWithout}) / ${lengthFrom}")
    if(NOT found EQUAL 1)
        message(FATAL_ERROR "Mutant ${name}: found ${found} times in ${arg_SOURCE}: ${arg_FROM}")
    endif()
    string(REPLACE "${arg_FROM}" "${arg_TO}" mutated "${original}")
    set(copy ${CMAKE_CURRENT_BINARY_DIR}/mutants/${name}/${arg_SOURCE})
    file(CONFIGURE OUTPUT ${copy} CONTENT "${mutated}" @ONLY)

    # What the copy defines is not taken from the library any more.
    set(test mirror_mutant_${name})
    qt_add_executable(${test})
    set_target_properties(${test} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    vexilo_configure(${test} PRIVATE mirror_model_main)
    target_sources(${test} PRIVATE ${copy})
    target_include_directories(${test} PRIVATE ${PROJECT_SOURCE_DIR}/src/foundation/cloud/mirror)
    add_test(NAME ${test} COMMAND ${test})
    set_tests_properties(${test} PROPERTIES TIMEOUT 120 PASS_REGULAR_EXPRESSION "does not hold"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;MIRROR_SEEDS=500")
endfunction()

mirror_mutant(no_read_back SOURCE Compaction.cpp
    FROM "if (!readBack || copy.data() != part->content.bytes)"
    TO "if (false)")
mirror_mutant(old_files_deleted_first SOURCE Compaction.cpp
    FROM "    if (auto written = writeChecked(folder, *rows); !written)"
    TO "    m_joined = inputs;
    if (auto deleted = deleteJoined(); !deleted)
        return deleted;
    if (auto written = writeChecked(folder, *rows); !written)")
mirror_mutant(carrier_although_the_row_changed SOURCE FileExport.cpp
    FROM "if (m_shelf.find(keyOf(row)) == row)"
    TO "if (m_shelf.find(keyOf(row)))")
mirror_mutant(carrier_by_an_old_revision SOURCE FileExport.cpp
    FROM "m_world.local.revision() == revision;"
    TO "revision.has_value();")
mirror_mutant(tombstones_dropped SOURCE Compaction.cpp
    FROM "        rows.push_back(*row);"
    TO "        if constexpr (std::is_same_v<Row, Record>) {
            if (std::holds_alternative<DeadRecord>(row->state))
                continue;
        }
        rows.push_back(*row);")
mirror_mutant(vanished_files_not_republished SOURCE FolderMirror.cpp
    FROM "    for (const auto& each : missing) {"
    TO "    missing.clear();
    for (const auto& each : missing) {")
mirror_mutant(wall_clock SOURCE HybridClock.cpp
    FROM "std::max(correctedReading(wall, offset), m_last).next()"
    TO "correctedReading(wall, offset).next()")
mirror_mutant(missing_folder_made_again SOURCE ZoneReview.cpp
    FROM "return isLost ? createEpoch() : Course::Wait;"
    TO "return createEpoch();")
mirror_mutant(rewritten_file_not_read SOURCE FileImport.cpp
    FROM "(!listed.size || seen.size == listed.size)"
    TO "true")
mirror_mutant(hash_not_compared SOURCE FileImport.cpp
    FROM "if (isAsNamed(*download, file.key))"
    TO "if (true)")
mirror_mutant(folders_deleted_before_markers SOURCE ZoneDeletion.cpp
    FROM "    if (auto closed = closeEpochs(*zone, *epochs); !closed)"
    TO "    if (auto removed = removeFolders(*zone, *epochs); !removed)
        return removed;
    if (auto closed = closeEpochs(*zone, *epochs); !closed)")
mirror_mutant(stopped_for_ever SOURCE ZoneReview.cpp
    FROM "    if (!zone.open().isEmpty())"
    TO "    if (!zone.open().isEmpty() && known->phase != MirrorPhase::Deleted)")
mirror_mutant(decision_overruled SOURCE ZoneReview.cpp
    FROM "        if (!isOff)"
    TO "        if (true)")
