orvane_test(txcal_panel_tests
  SOURCES frm_auto_cal_test.cpp
          panel_inputs_test.cpp
          panel_operations_test.cpp
          side_tables_groups_test.cpp
          side_tables_test.cpp
  LINKS orvane_txcal orvane_test_support)
