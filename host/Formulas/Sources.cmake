# The formula engine.
target_sources(zorv_formulas_objects PRIVATE ${CMAKE_CURRENT_LIST_DIR}/CalcExpr.cpp)
