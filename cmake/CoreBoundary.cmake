# The computing core must stay free of Qt: the batch run needs no display and
# every rule is tested without a window. Fail the configuration if a core
# library links a Qt target.
foreach(lib core_base core_scenario core_tables core_law core_engine core_reports)
  if(TARGET ${lib})
    get_target_property(_links ${lib} LINK_LIBRARIES)
    if(_links)
      foreach(l ${_links})
        if(l MATCHES "^Qt")
          message(FATAL_ERROR "${lib} links ${l}: the core must not depend on Qt")
        endif()
      endforeach()
    endif()
  endif()
endforeach()
