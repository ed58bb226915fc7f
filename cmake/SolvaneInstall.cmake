# cmake --install build/release [--prefix DIR] [--component plugins|program]: for the whole machine, below lib, bin
# and share.
install (FILES "${SOLVANE_DIST}/vst/SOLVANE.so" DESTINATION lib/vst COMPONENT plugins)
install (DIRECTORY "${SOLVANE_DIST}/vst3/SOLVANE.vst3" DESTINATION lib/vst3 COMPONENT plugins)
install (DIRECTORY "${SOLVANE_DIST}/lv2/SOLVANE.lv2" DESTINATION lib/lv2 COMPONENT plugins)
install (PROGRAMS "${SOLVANE_DIST}/bin/solvane" "${SOLVANE_DIST}/standalone/SOLVANE" DESTINATION bin COMPONENT program)
install (DIRECTORY "${SOLVANE_DIST}/share/" DESTINATION share COMPONENT program)
