# cmake -DBUNDLE=<folder> -DURI=<plug-in> -DEMAIL=<address> -DVERSION=<a.b.c> -P MendLv2Bundle.cmake: corrects what the
# framework's generator writes into a bundle against the interface's own rules. Each text that it changes must be there,
# so that a framework that writes something else is noticed.

# Replaces every occurrence of a text in one of the bundle's files.
function (mend name from to)
    file (READ "${BUNDLE}/${name}" text)
    string (FIND "${text}" "${from}" place)

    if (place EQUAL -1)
        message (FATAL_ERROR "${BUNDLE}/${name} has no\n${from}")
    endif()

    string (REPLACE "${from}" "${to}" text "${text}")
    file (WRITE "${BUNDLE}/${name}" "${text}")
endfunction()

# An odd number, or a minor version of 0, marks a version in development, which hosts may hide. Both only ever grow.
string (REPLACE "." ";" parts "${VERSION}")
list (GET parts 0 major)
list (GET parts 1 minor)
list (GET parts 2 patch)
math (EXPR lv2_minor "2 * (100 * ${major} + ${minor})")
math (EXPR lv2_micro "2 * ${patch}")
set (versions "lv2:minorVersion ${lv2_minor} ;\n\tlv2:microVersion ${lv2_micro} ;\n")

# The one preset has no name and changes nothing.
mend (manifest.ttl "<${URI}:preset1>
	a pset:Preset ;
	lv2:appliesTo <${URI}> ;
	rdfs:label \"\" ;
	state:state [ <${URI}:Program> \"0\"^^xsd:int ; ] .
" "")
mend (manifest.ttl "	a lv2:Plugin ;\n" "	a lv2:Plugin , lv2:EQPlugin ;\n	${versions}")

# What a state holds, for hosts that show or check it.
mend (dsp.ttl "plug:input_group_1\n" "plug:StateString
	a lv2:Parameter ;
	rdfs:label \"State\" ;
	rdfs:range atom:String .

plug:Program
	a lv2:Parameter ;
	rdfs:label \"Program\" ;
	rdfs:range atom:Int .

plug:input_group_1\n")

mend (dsp.ttl "	a lv2:Plugin ;\n" "	a lv2:Plugin , lv2:EQPlugin , doap:Project ;
	doap:license <http://www.gnu.org/licenses/gpl-3.0> ;\n")
mend (dsp.ttl "foaf:mbox <${EMAIL}>" "foaf:mbox <mailto:${EMAIL}>")

# A port's properties; a parameter's switch positions are in its scale points.
mend (dsp.ttl "	lv2:portProperty lv2:enumeration , lv2:toggled ;\n" "")

# Our entry fills in for a host that has neither.
mend (dsp.ttl "		lv2:hardRTCapable ;\n" "		lv2:hardRTCapable ,
		opts:options ,
		bufs:boundedBlockLength ;\n")
mend (dsp.ttl "		urid:map ,
		opts:options ,
		bufs:boundedBlockLength ;\n" "		urid:map ;\n")

mend (ui.ttl "		ui:noUserResize ,\n" "")
mend (ui.ttl "		opts:interface ,\n		opts:options ;\n" "		opts:options ;\n")

file (READ "${BUNDLE}/dsp.ttl" text)
string (REGEX REPLACE "lv2:minorVersion [0-9]+ ;\n\tlv2:microVersion [0-9]+ ;\n" "${versions}" text "${text}")
file (WRITE "${BUNDLE}/dsp.ttl" "${text}")
