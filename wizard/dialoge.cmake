# The small dialogs, the pages of the results, and the images: part of the wizard's library.
target_sources(kalibrierung_wizard PRIVATE
  ausgabeseite.cpp ausgabeseite.h
  bilder.cpp bilder.h
  bilder/dialoge.qrc
  bildfeld.cpp bildfeld.h
  diagramme.cpp diagramme.h
  frmcalcoptions.cpp frmcalcoptions.h
  frmexport.cpp frmexport.h
  frminfo.cpp frminfo.h
  lesefeld.cpp lesefeld.h
  plausibilitaet.cpp plausibilitaet.h
  plausibilitaetsseite.cpp plausibilitaetsseite.h
  stellenoptionen.cpp stellenoptionen.h
)
target_link_libraries(kalibrierung_wizard PRIVATE Kalibrierung::ProtocolWindows Qt6::Svg)
